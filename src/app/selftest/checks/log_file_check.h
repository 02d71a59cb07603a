#pragma once

#include "app/selftest/self_check.h"
#include "app/selftest/self_check_context.h"

namespace tessary {

// Whether the log file can be appended to (or created). Nothing is written.
class LogFileCheck final : public SelfCheck {
public:
    explicit LogFileCheck(const SelfCheckContext &context);
    void run(Done done) override;

private:
    const SelfCheckContext &m_context;
};

} // namespace tessary

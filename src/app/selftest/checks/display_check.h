#pragma once

#include "app/selftest/self_check.h"
#include "app/selftest/self_check_context.h"

namespace tessary {

// The X connection and the RandR monitors, each with its usable area.
class DisplayCheck final : public SelfCheck {
public:
    explicit DisplayCheck(const SelfCheckContext &context);
    void run(Done done) override;

private:
    const SelfCheckContext &m_context;
};

} // namespace tessary

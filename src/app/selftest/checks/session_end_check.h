#pragma once

#include "app/selftest/self_check.h"
#include "app/selftest/self_check_context.h"

namespace tessary {

// Whether the X server ends the session on Ctrl+Alt+Backspace while that is the restore shortcut.
class SessionEndCheck final : public SelfCheck {
public:
    explicit SessionEndCheck(const SelfCheckContext &context);
    void run(Done done) override;

private:
    const SelfCheckContext &m_context;
};

} // namespace tessary

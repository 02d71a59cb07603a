#pragma once

#include "app/selftest/self_check.h"
#include "app/selftest/self_check_context.h"

namespace tessary {

// The keyboard layout and whether every default shortcut's key exists on it.
class KeyboardCheck final : public SelfCheck {
public:
    explicit KeyboardCheck(const SelfCheckContext &context);
    void run(Done done) override;

private:
    const SelfCheckContext &m_context;
};

} // namespace tessary

#pragma once

#include "app/selftest/self_check.h"
#include "app/selftest/self_check_context.h"

namespace tessary {

// Whether each action's shortcut can be registered right now: a trial grab, released at once.
class ShortcutsCheck final : public SelfCheck {
public:
    explicit ShortcutsCheck(const SelfCheckContext &context);
    void run(Done done) override;

private:
    const SelfCheckContext &m_context;
};

} // namespace tessary

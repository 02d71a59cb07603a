#pragma once

#include "app/selftest/self_check.h"
#include "app/selftest/self_check_context.h"

namespace tessary {

// The window manager's name and each EWMH feature window snapping relies on.
class WindowManagerCheck final : public SelfCheck {
public:
    explicit WindowManagerCheck(const SelfCheckContext &context);
    void run(Done done) override;

private:
    const SelfCheckContext &m_context;
};

} // namespace tessary

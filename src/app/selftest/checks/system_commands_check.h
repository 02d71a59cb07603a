#pragma once

#include "app/selftest/self_check.h"

namespace tessary {

// Which system commands the launcher can offer here: each needs its program installed.
class SystemCommandsCheck final : public SelfCheck {
public:
    SystemCommandsCheck();
    void run(Done done) override;
};

} // namespace tessary

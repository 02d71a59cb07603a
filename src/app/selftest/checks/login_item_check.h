#pragma once

#include "app/selftest/self_check.h"

namespace tessary {

// Whether Tessary opens at login, and whether that entry would start it.
class LoginItemCheck final : public SelfCheck {
public:
    LoginItemCheck();
    void run(Done done) override;
};

} // namespace tessary

#pragma once

#include "app/selftest/self_check.h"

namespace tessary {

// The calculator against known answers, refusals and display forms.
class CalculatorCheck final : public SelfCheck {
public:
    CalculatorCheck();
    void run(Done done) override;
};

} // namespace tessary

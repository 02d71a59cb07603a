#pragma once

#include "app/selftest/self_check.h"

namespace tessary {

// The fuzzy matcher's tiers against known scores.
class FuzzyCheck final : public SelfCheck {
public:
    FuzzyCheck();
    void run(Done done) override;
};

} // namespace tessary

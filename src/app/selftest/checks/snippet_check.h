#pragma once

#include "app/selftest/self_check.h"

namespace tessary {

// Snippet placeholders expanded for a fixed moment in the en_US locale.
class SnippetCheck final : public SelfCheck {
public:
    SnippetCheck();
    void run(Done done) override;
};

} // namespace tessary

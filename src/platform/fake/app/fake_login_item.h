#pragma once

#include "core/platform/login_item.h"

namespace tessary {

// A login item in memory; `failure` makes the next set() fail with that text.
class FakeLoginItem final : public LoginItem {
public:
    Status status() const override { return current; }
    std::optional<QString> set(bool enabled) override
    {
        if (failure)
            return failure;
        current = enabled ? (approvalNeeded ? Status::requiresApproval : Status::enabled) : Status::disabled;
        return std::nullopt;
    }

    Status current = Status::disabled;
    bool approvalNeeded = false;
    std::optional<QString> failure;
};

} // namespace tessary

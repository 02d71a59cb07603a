#pragma once

#include "test_desktop.h"

#include <functional>
#include <memory>
#include <optional>

namespace tessary {

// Runs `start`, which hands its outcome to the callback it is given later,
// and processes events until the outcome arrives; none when it has not after
// three seconds.
template <typename T> std::optional<T> awaited(const std::function<void(std::function<void(T)>)> &start)
{
    auto outcome = std::make_shared<std::optional<T>>();
    start([outcome](T value) { *outcome = std::move(value); });
    TestDesktop::waitFor([&] { return outcome->has_value(); });
    return *outcome;
}

} // namespace tessary

#pragma once

#include "core/windows/window_manager.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>

namespace tessary {

// The outcomes of window operations on a fake desktop that completes its
// writes at once; a test fails when one is still under way.
inline WindowManager::ApplyResult applied(WindowManager &manager, Layout layout, WindowId window, qint64 pid)
{
    std::optional<WindowManager::ApplyResult> result;
    manager.apply(layout, window, pid, [&result](const WindowManager::ApplyResult &outcome) { result = outcome; });
    if (!result) {
        ADD_FAILURE() << "the snap is still under way";
        return WindowManager::Failure::noWindow;
    }
    return *result;
}

inline std::optional<WindowManager::Failure> completed(const std::function<void(WindowManager::Done)> &operation)
{
    bool done = false;
    std::optional<WindowManager::Failure> result;
    operation([&](std::optional<WindowManager::Failure> failure) {
        done = true;
        result = failure;
    });
    if (!done)
        ADD_FAILURE() << "the operation is still under way";
    return result;
}

inline std::optional<WindowManager::Failure> restored(WindowManager &manager)
{
    return completed([&](WindowManager::Done done) { manager.restore(std::move(done)); });
}

inline std::optional<WindowManager::Failure> movedToDisplay(WindowManager &manager, bool next)
{
    return completed([&](WindowManager::Done done) { manager.moveToDisplay(next, std::move(done)); });
}

} // namespace tessary

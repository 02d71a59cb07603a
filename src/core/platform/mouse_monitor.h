#pragma once

#include <functional>

namespace tessary {

// System-wide left mouse button presses and releases, seen without grabbing
// the pointer. Callbacks run on the main thread.
class MouseMonitor {
public:
    virtual ~MouseMonitor() = default;

    // Adds a listener for the monitor's lifetime, installing the monitor on
    // first use; false when the platform cannot provide it. Either callback
    // may be empty.
    virtual bool listen(std::function<void()> onLeftDown, std::function<void()> onLeftUp) = 0;
};

} // namespace tessary

#pragma once

#include <functional>

namespace tessary {

// System-wide left mouse button presses and releases, seen without grabbing
// the pointer. Callbacks run on the main thread.
class MouseMonitor {
public:
    virtual ~MouseMonitor() = default;

    // Installs the monitor once; false when the platform cannot provide it.
    virtual bool start(std::function<void()> onLeftDown, std::function<void()> onLeftUp) = 0;
};

} // namespace tessary

#pragma once

#include <functional>

namespace tessary {

// The desktop session's own actions, as the desktop the user runs offers them.
// Main thread.
class SessionControl {
public:
    enum class Action { sleep, lock, screenSaver, darkMode, emptyTrash, eject, settings, logout, restart, shutdown };

    virtual ~SessionControl() = default;

    // Whether `action` will work in this session, as far as is known now:
    // answers from the session's services may arrive after start-up.
    virtual bool offers(Action action) const = 0;
    // Starts `action` and returns at once. `done` is called once, later, on the
    // main thread: false when the action did not work.
    virtual void perform(Action action, std::function<void(bool ok)> done) = 0;
};

} // namespace tessary

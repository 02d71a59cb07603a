#pragma once

#include <functional>

namespace tessary {

// Posts the paste keystroke into the application the user was working in
// before one of Tessary's panels took the keyboard. Main thread only.
class KeystrokeSender {
public:
    virtual ~KeystrokeSender() = default;

    // Remembers the window that has the keyboard now as the next paste's
    // target. Called just before a panel of ours takes the keyboard; a window
    // of this process is never remembered.
    virtual void rememberTarget() = 0;

    // Gives the remembered target (else the focused window) the keyboard back,
    // releases modifiers the user still holds and posts that window's paste
    // keystroke. `done` runs once, with whether the keystroke was posted.
    virtual void sendPaste(std::function<void(bool posted)> done) = 0;
};

} // namespace tessary

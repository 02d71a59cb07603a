#pragma once

#include <xcb/xcb.h>

#include <optional>

namespace tessary {

class X11Connection;

// The keyboard right after a hot key press. Hot keys are grabbed in
// synchronous mode, so after a press the server holds back every later key
// event until this client lets the keyboard go: nothing typed right after a
// hot key reaches another window before the hot key's handler has decided
// where the keys belong. Once the handler has run the keyboard is let go,
// unless a panel took the freeze over; that panel lets it go as soon as it
// has the focus, and the held-back keys then reach it in the order typed.
// Main thread only.
class X11KeyboardFreeze {
public:
    explicit X11KeyboardFreeze(X11Connection &x11);

    // A hot key press at `time` froze the keyboard.
    void frozenBy(xcb_timestamp_t time);
    // Takes the freeze over: the time of the press that froze the keyboard,
    // or none when it is not frozen now.
    std::optional<xcb_timestamp_t> takeOver();
    // The press's handler has run: lets the keyboard go unless it was taken over.
    void handlerDone();
    // Lets the held-back keys go, to the window that has the focus by then.
    void thaw();

private:
    X11Connection &m_x11;
    std::optional<xcb_timestamp_t> m_frozenAt;
    bool m_takenOver = false;
};

} // namespace tessary

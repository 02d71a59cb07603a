#pragma once

#include <QtGlobal>

namespace tessary {

// Hands the keyboard to a panel of ours and back. Main thread only.
class PanelKeyboard {
public:
    virtual ~PanelKeyboard() = default;

    // `window` (a native window id) has just been shown: it takes the keyboard
    // now, whatever the window manager's focus rules. When a hot key opened
    // it, the keys typed since that press reach it in order, and none reach
    // the window that had the keyboard.
    virtual void focusPanel(quintptr window) = 0;

    // `window` is about to hide: the keyboard goes back to the window that
    // had it before, unless the user has moved it elsewhere meanwhile.
    virtual void panelHiding(quintptr window) = 0;
};

} // namespace tessary

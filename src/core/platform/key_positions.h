#pragma once

#include <QtGlobal>

namespace tessary {

// Where a hardware key sits on the keyboard, independent of the layout.
class KeyPositions {
public:
    virtual ~KeyPositions() = default;
    // The portable key code (ANSI position) of the hardware key `nativeKey`
    // (an X keycode on X11), or -1 when the key has no portable code.
    virtual int keyCode(quint32 nativeKey) const = 0;
};

} // namespace tessary

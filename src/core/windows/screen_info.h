#pragma once

#include "core/windows/rect.h"

namespace tessary {

// One attached display in desktop coordinates (origin bottom-left of the first
// display, y up). `visible` excludes panels, docks and the menu bar. `scale`
// is how many frame units one point is there (2 on a double-density display
// whose frames count device pixels).
struct ScreenInfo {
    Rect frame;
    Rect visible;
    double scale = 1;

    friend bool operator==(const ScreenInfo &, const ScreenInfo &) = default;
};

} // namespace tessary

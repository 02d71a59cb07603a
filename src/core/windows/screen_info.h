#pragma once

#include "core/windows/rect.h"

namespace tessary {

// One attached display in desktop coordinates (origin bottom-left of the first
// display, y up). `visible` excludes panels, docks and the menu bar.
struct ScreenInfo {
    Rect frame;
    Rect visible;

    friend bool operator==(const ScreenInfo &, const ScreenInfo &) = default;
};

} // namespace tessary

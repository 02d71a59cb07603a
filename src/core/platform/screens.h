#pragma once

#include "core/windows/screen_info.h"

#include <QList>
#include <QPointF>

namespace tessary {

// Attached displays and the pointer, in desktop coordinates (origin bottom-left
// of the first display, y up). The first display is the primary one.
class Screens {
public:
    virtual ~Screens() = default;

    virtual QList<ScreenInfo> screens() const = 0;
    virtual QPointF pointerLocation() const = 0;
    // Whether translucent windows are blended with what lies below them; on
    // X11 only while a compositing manager runs.
    virtual bool composited() const = 0;
};

} // namespace tessary

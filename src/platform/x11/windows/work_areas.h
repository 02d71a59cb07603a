#pragma once

#include "platform/x11/windows/strut_area.h"

#include <QList>
#include <QRect>
#include <QSize>

#include <optional>

namespace tessary {

// What the desktop says about the space windows may use, in root coordinates.
struct WorkAreaHints {
    // _GTK_WORKAREAS_D<current desktop>: one rectangle per monitor, published
    // by desktops whose panels are drawn by the window manager itself (no
    // dock window, no strut).
    QList<QRect> perMonitor;
    // The docks' struts.
    QList<Strut> struts;
    // _NET_WORKAREA of the current desktop: one rectangle for all monitors.
    std::optional<QRect> desktopWide;
};

// The usable part of `monitor`: its own published work area where there are
// such, else what the struts leave of it, else its overlap with the
// desktop-wide work area (which cannot tell which monitor a panel is on, so it
// comes last). The whole monitor when nothing applies.
QRect usableArea(const QRect &monitor, QSize root, const WorkAreaHints &hints);

} // namespace tessary

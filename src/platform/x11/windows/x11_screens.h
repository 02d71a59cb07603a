#pragma once

#include "core/platform/screens.h"
#include "platform/x11/windows/work_areas.h"
#include "platform/x11/x11_connection.h"

namespace tessary {

// Screens over RandR monitors, the primary first. Each monitor's usable area
// is what the desktop publishes for it (_GTK_WORKAREAS_D<n> of the current
// desktop), else what the panels' and docks' struts leave of it, else its
// part of _NET_WORKAREA. Its scale is the device pixel ratio Qt gives the
// screen there. Everything is read afresh on each call, so panels,
// monitors and desktop switches are always current. Main thread only.
class X11Screens final : public Screens {
public:
    explicit X11Screens(X11Connection &x11);

    QList<ScreenInfo> screens() const override;
    QPointF pointerLocation() const override;
    // A compositing manager owns the _NET_WM_CM_S0 selection; one round trip.
    bool composited() const override;

private:
    QSize rootSize() const;
    WorkAreaHints workAreaHints(QSize root) const;

    X11Connection &m_x11;
    xcb_atom_t m_compositorSelection;
};

} // namespace tessary

#pragma once

#include "core/platform/screens.h"
#include "platform/x11/windows/strut_area.h"
#include "platform/x11/windows/x11_clients.h"

namespace tessary {

// Screens over RandR monitors, the primary first. Each monitor's usable area
// leaves out the struts that panels and docks reserve on it (not the single
// desktop-wide _NET_WORKAREA). Everything is read afresh on each call. Main
// thread only.
class X11Screens final : public Screens {
public:
    explicit X11Screens(X11Connection &x11);

    QList<ScreenInfo> screens() const override;
    QPointF pointerLocation() const override;

private:
    QSize rootSize() const;
    QList<Strut> struts() const;

    X11Connection &m_x11;
    X11Clients m_clients;
};

} // namespace tessary

#pragma once

#include "platform/x11/x11_connection.h"

#include <QList>
#include <QRect>

namespace tessary::X11Monitors {

// The RandR monitors in root coordinates: the primary first, the others in the
// server's order. Without RandR monitors, the whole root as one.
QList<QRect> read(X11Connection &x11);

} // namespace tessary::X11Monitors

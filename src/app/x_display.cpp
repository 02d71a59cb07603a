#include "app/x_display.h"

#include <xcb/xcb.h>

namespace tessary {

std::optional<QString> xDisplayProblem()
{
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        return QStringLiteral("there is no X display (DISPLAY is not set).");
    xcb_connection_t *probe = xcb_connect(nullptr, nullptr);
    const bool reachable = xcb_connection_has_error(probe) == 0;
    xcb_disconnect(probe);
    if (reachable)
        return std::nullopt;
    return QStringLiteral("cannot open the X display \"%1\".").arg(qEnvironmentVariable("DISPLAY"));
}

} // namespace tessary

#include "platform/x11/windows/x11_monitors.h"

#include <xcb/randr.h>

#include <cstdlib>

namespace tessary::X11Monitors {

QList<QRect> read(X11Connection &x11)
{
    QList<QRect> monitors;
    xcb_connection_t *connection = x11.connection();
    const auto cookie = xcb_randr_get_monitors(connection, x11.root(), 1);
    if (auto *reply = xcb_randr_get_monitors_reply(connection, cookie, nullptr)) {
        for (auto it = xcb_randr_get_monitors_monitors_iterator(reply); it.rem; xcb_randr_monitor_info_next(&it)) {
            const QRect rect(it.data->x, it.data->y, it.data->width, it.data->height);
            if (rect.isEmpty())
                continue;
            if (it.data->primary)
                monitors.prepend(rect);
            else
                monitors.append(rect);
        }
        std::free(reply);
    }
    if (monitors.isEmpty() && x11.screen())
        monitors.append(QRect(0, 0, x11.screen()->width_in_pixels, x11.screen()->height_in_pixels));
    return monitors;
}

} // namespace tessary::X11Monitors

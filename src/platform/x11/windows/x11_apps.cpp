#include "platform/x11/windows/x11_apps.h"

namespace tessary {

X11Apps::X11Apps(X11Connection &x11)
    : m_clients(x11)
{
}

std::optional<RunningApp> X11Apps::appOf(xcb_window_t window) const
{
    if (window == XCB_WINDOW_NONE)
        return std::nullopt;
    RunningApp app;
    app.pid = m_clients.pid(window);
    const X11Clients::WindowClass windowClass = m_clients.windowClass(window);
    if (const auto entry = m_entries.find(windowClass.instance, windowClass.className)) {
        app.id = entry->id;
        app.name = entry->name;
    } else {
        app.id = QString::fromUtf8(windowClass.className);
        app.name = app.id.isEmpty() ? m_clients.title(window) : app.id;
    }
    return app;
}

} // namespace tessary

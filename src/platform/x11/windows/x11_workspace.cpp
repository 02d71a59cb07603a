#include "platform/x11/windows/x11_workspace.h"

#include <QCoreApplication>

namespace tessary {

X11Workspace::X11Workspace(X11Connection &x11)
    : m_apps(x11)
    , m_history(x11)
{
}

qint64 X11Workspace::ownPid() const { return QCoreApplication::applicationPid(); }

std::optional<RunningApp> X11Workspace::frontmostApplication() const
{
    return m_apps.appOf(m_apps.clients().activeWindow());
}

std::optional<RunningApp> X11Workspace::menuBarOwningApplication() const
{
    const xcb_window_t active = m_apps.clients().activeWindow();
    if (isForeign(active))
        return m_apps.appOf(active);
    if (const xcb_window_t last = lastActiveForeignWindow(); last != XCB_WINDOW_NONE)
        return m_apps.appOf(last);
    return m_apps.appOf(topmostForeignWindow());
}

QList<RunningApp> X11Workspace::runningApplications() const
{
    QList<RunningApp> apps;
    for (const xcb_window_t window : m_apps.clients().clientList()) {
        if (!m_apps.clients().isApplicationWindow(window))
            continue;
        const std::optional<RunningApp> app = m_apps.appOf(window);
        if (app && !apps.contains(*app))
            apps.append(*app);
    }
    return apps;
}

bool X11Workspace::isForeign(xcb_window_t window) const
{
    return window != XCB_WINDOW_NONE && m_apps.clients().isApplicationWindow(window)
        && m_apps.clients().pid(window) != ownPid();
}

xcb_window_t X11Workspace::lastActiveForeignWindow() const
{
    const QList<xcb_window_t> managed = m_apps.clients().clientList();
    for (const xcb_window_t window : m_history.recentFirst()) {
        if (managed.contains(window) && isForeign(window))
            return window;
    }
    return XCB_WINDOW_NONE;
}

xcb_window_t X11Workspace::topmostForeignWindow() const
{
    const X11Clients &clients = m_apps.clients();
    for (const xcb_window_t window : clients.stackingTopFirst()) {
        if (isForeign(window) && !clients.hasState(window, "_NET_WM_STATE_HIDDEN"))
            return window;
    }
    return XCB_WINDOW_NONE;
}

} // namespace tessary

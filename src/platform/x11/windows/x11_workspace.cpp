#include "platform/x11/windows/x11_workspace.h"

#include <QCoreApplication>

namespace tessary {

X11Workspace::X11Workspace(X11Connection &x11)
    : m_x11(x11)
    , m_apps(x11)
    , m_activeWindowAtom(x11.atom("_NET_ACTIVE_WINDOW"))
{
    x11.watchRootProperties();
    QCoreApplication::instance()->installNativeEventFilter(this);
    onActiveWindowChanged();
}

X11Workspace::~X11Workspace()
{
    if (auto *app = QCoreApplication::instance())
        app->removeNativeEventFilter(this);
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
    if (m_lastForeignActive != XCB_WINDOW_NONE && m_apps.clients().clientList().contains(m_lastForeignActive))
        return m_apps.appOf(m_lastForeignActive);
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

bool X11Workspace::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    if ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY) {
        const auto *notify = static_cast<const xcb_property_notify_event_t *>(message);
        if (notify->window == m_x11.root() && notify->atom == m_activeWindowAtom)
            onActiveWindowChanged();
    }
    return false;
}

void X11Workspace::onActiveWindowChanged()
{
    const xcb_window_t active = m_apps.clients().activeWindow();
    if (isForeign(active))
        m_lastForeignActive = active;
}

bool X11Workspace::isForeign(xcb_window_t window) const
{
    return window != XCB_WINDOW_NONE && m_apps.clients().isApplicationWindow(window)
        && m_apps.clients().pid(window) != ownPid();
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

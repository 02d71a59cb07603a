#include "platform/x11/windows/x11_accessibility.h"

#include "platform/x11/windows/x11_monitors.h"
#include "platform/x11/windows/x11_properties.h"

#include <cmath>
#include <utility>

namespace tessary {

X11Accessibility::X11Accessibility(X11Connection &x11)
    : m_x11(x11)
    , m_apps(x11)
    , m_frames(x11)
    , m_moves(m_frames)
    , m_history(x11)
{
    x11.internAtoms({"_NET_ACTIVE_WINDOW", "_NET_CLIENT_LIST", "_NET_CLIENT_LIST_STACKING", "_NET_CURRENT_DESKTOP",
        "_NET_FRAME_EXTENTS", "_GTK_FRAME_EXTENTS", "_NET_MOVERESIZE_WINDOW", "_NET_SUPPORTED",
        "_NET_SUPPORTING_WM_CHECK", "_NET_WM_DESKTOP", "_NET_WM_NAME", "_NET_WM_PID", "_NET_WM_STATE",
        "_NET_WM_STATE_FULLSCREEN", "_NET_WM_STATE_MAXIMIZED_HORZ", "_NET_WM_STATE_MAXIMIZED_VERT", "_NET_WM_STRUT",
        "_NET_WM_STRUT_PARTIAL", "_NET_WM_WINDOW_TYPE", "_NET_WORKAREA", "_GTK_WORKAREAS_D0"});
}

bool X11Accessibility::isTrusted() const
{
    // EWMH: the root names a check window that names itself; a stale root
    // property left by a window manager that quit names a window that is gone.
    const xcb_atom_t check = m_x11.atom("_NET_SUPPORTING_WM_CHECK");
    const QList<xcb_window_t> named = X11Properties::windows(m_x11.connection(), m_x11.root(), check);
    if (named.isEmpty())
        return false;
    return X11Properties::windows(m_x11.connection(), named.first(), check) == QList<xcb_window_t>{named.first()};
}

bool X11Accessibility::requestTrust() { return true; }

void X11Accessibility::openPrivacySettings() { }

std::optional<WindowId> X11Accessibility::focusedWindow(const RunningApp &app) const
{
    const X11Clients &clients = m_apps.clients();
    const xcb_window_t active = clients.activeWindow();
    if (active != XCB_WINDOW_NONE && clients.isApplicationWindow(active) && belongsTo(active, app))
        return active;
    const QList<xcb_window_t> managed = clients.clientList();
    const quint32 currentDesktop
        = X11Properties::cardinals(m_x11.connection(), m_x11.root(), m_x11.atom("_NET_CURRENT_DESKTOP"))
              .value_or(QList<quint32>{0})
              .value(0);
    for (const xcb_window_t window : m_history.recentFirst()) {
        if (window != active && isCandidate(window, app, managed, currentDesktop))
            return window;
    }
    for (const xcb_window_t window : clients.stackingTopFirst()) {
        if (window != active && isCandidate(window, app, managed, currentDesktop))
            return window;
    }
    return std::nullopt;
}

bool X11Accessibility::isCandidate(
    xcb_window_t window, const RunningApp &app, const QList<xcb_window_t> &managed, quint32 currentDesktop) const
{
    constexpr quint32 allDesktops = 0xFFFFFFFF;
    const X11Clients &clients = m_apps.clients();
    if (!managed.contains(window) || !clients.isApplicationWindow(window)
        || clients.hasState(window, "_NET_WM_STATE_HIDDEN") || !belongsTo(window, app))
        return false;
    const auto desktop = X11Properties::cardinals(m_x11.connection(), window, m_x11.atom("_NET_WM_DESKTOP"));
    return !desktop || desktop->isEmpty() || desktop->first() == currentDesktop || desktop->first() == allDesktops;
}

bool X11Accessibility::belongsTo(xcb_window_t window, const RunningApp &app) const
{
    const std::optional<RunningApp> owner = m_apps.appOf(window);
    return owner && owner->pid == app.pid && owner->id == app.id;
}

std::optional<Rect> X11Accessibility::frame(WindowId window) const
{
    const std::optional<QRect> visible = m_frames.visibleFrame(xcb_window_t(window));
    if (!visible)
        return std::nullopt;
    const QPoint origin = primaryOrigin();
    return Rect{double(visible->x() - origin.x()), double(visible->y() - origin.y()), double(visible->width()),
        double(visible->height())};
}

void X11Accessibility::setFrame(
    WindowId window, const Rect &frame, const QObject *context, std::function<void(bool moved)> done)
{
    const QPoint origin = primaryOrigin();
    const QRect target(int(std::lround(frame.minX())) + origin.x(), int(std::lround(frame.minY())) + origin.y(),
        int(std::lround(frame.absWidth())), int(std::lround(frame.absHeight())));
    if (target.isEmpty())
        return done(false);
    m_moves.move(xcb_window_t(window), target, context, std::move(done));
}

bool X11Accessibility::isFullScreen(WindowId window) const
{
    return m_apps.clients().hasState(xcb_window_t(window), "_NET_WM_STATE_FULLSCREEN");
}

quint64 X11Accessibility::windowHash(WindowId window) const { return window; }

QPoint X11Accessibility::primaryOrigin() const
{
    const QList<QRect> monitors = X11Monitors::read(m_x11);
    return monitors.isEmpty() ? QPoint() : monitors.first().topLeft();
}

} // namespace tessary

#include "platform/x11/windows/x11_screens.h"

#include "platform/x11/windows/x11_monitors.h"
#include "platform/x11/windows/x11_properties.h"

#include <QGuiApplication>
#include <QScreen>

#include <cstdlib>
#include <utility>

namespace tessary {
namespace {

// Device pixels per point on `monitor`, as Qt reports it for the screen there
// (from Xft.dpi or QT_SCREEN_SCALE_FACTORS). Qt keeps a screen's native
// origin when it scales its geometry, so the origins match.
double scaleOf(const QRect &monitor)
{
    for (const QScreen *screen : QGuiApplication::screens()) {
        if (screen->geometry().topLeft() == monitor.topLeft())
            return screen->devicePixelRatio();
    }
    return 1;
}

// Root coordinates (y down) → desktop coordinates (y up, origin at the
// primary monitor's bottom-left).
Rect toDesktop(const QRect &rect, const QRect &primary)
{
    const double maxY = rect.y() - primary.y() + rect.height();
    return Rect{double(rect.x() - primary.x()), primary.height() - maxY, double(rect.width()), double(rect.height())};
}

} // namespace

X11Screens::X11Screens(X11Connection &x11)
    : m_x11(x11)
    // The connection works on the first screen, whose selection ends in 0.
    , m_compositorSelection(x11.atom("_NET_WM_CM_S0"))
{
}

bool X11Screens::composited() const
{
    xcb_connection_t *connection = m_x11.connection();
    auto *reply = xcb_get_selection_owner_reply(
        connection, xcb_get_selection_owner(connection, m_compositorSelection), nullptr);
    const bool owned = reply && reply->owner != XCB_WINDOW_NONE;
    std::free(reply);
    return owned;
}

QList<ScreenInfo> X11Screens::screens() const
{
    const QList<QRect> monitors = X11Monitors::read(m_x11);
    if (monitors.isEmpty())
        return {};
    const QSize root = rootSize();
    const WorkAreaHints hints = workAreaHints(root);
    QList<ScreenInfo> result;
    for (const QRect &monitor : monitors)
        result.append({toDesktop(monitor, monitors.first()),
            toDesktop(usableArea(monitor, root, hints), monitors.first()), scaleOf(monitor)});
    return result;
}

QPointF X11Screens::pointerLocation() const
{
    xcb_connection_t *connection = m_x11.connection();
    auto *reply = xcb_query_pointer_reply(connection, xcb_query_pointer(connection, m_x11.root()), nullptr);
    if (!reply)
        return {};
    const QPoint root(reply->root_x, reply->root_y);
    std::free(reply);
    const QList<QRect> monitors = X11Monitors::read(m_x11);
    const QRect primary = monitors.isEmpty() ? QRect() : monitors.first();
    return QPointF(root.x() - primary.x(), primary.height() - (root.y() - primary.y()));
}

QSize X11Screens::rootSize() const
{
    // The setup block's size goes stale when RandR resizes the screen.
    xcb_connection_t *connection = m_x11.connection();
    auto *reply = xcb_get_geometry_reply(connection, xcb_get_geometry(connection, m_x11.root()), nullptr);
    if (!reply)
        return {};
    const QSize size(reply->width, reply->height);
    std::free(reply);
    return size;
}

WorkAreaHints X11Screens::workAreaHints(QSize root) const
{
    // Two round trips however many clients there are: each round's requests
    // all go out before its first reply is awaited.
    xcb_connection_t *connection = m_x11.connection();
    const xcb_window_t rootWindow = m_x11.root();
    const auto desktopCookie = X11Properties::request(connection, rootWindow, m_x11.atom("_NET_CURRENT_DESKTOP"));
    const auto clientsCookie = X11Properties::request(connection, rootWindow, m_x11.atom("_NET_CLIENT_LIST"));
    const auto workAreaCookie = X11Properties::request(connection, rootWindow, m_x11.atom("_NET_WORKAREA"));
    const quint32 desktop
        = X11Properties::values32(connection, desktopCookie, XCB_ATOM_CARDINAL).value_or(QList<quint32>{0}).value(0);
    const QList<quint32> clients
        = X11Properties::values32(connection, clientsCookie, XCB_ATOM_WINDOW).value_or(QList<quint32>{});
    const QList<quint32> desktopWide
        = X11Properties::values32(connection, workAreaCookie, XCB_ATOM_CARDINAL).value_or(QList<quint32>{});

    const auto perMonitorCookie
        = X11Properties::request(connection, rootWindow, m_x11.atom("_GTK_WORKAREAS_D" + QByteArray::number(desktop)));
    const xcb_atom_t partial = m_x11.atom("_NET_WM_STRUT_PARTIAL");
    const xcb_atom_t full = m_x11.atom("_NET_WM_STRUT");
    QList<std::pair<xcb_get_property_cookie_t, xcb_get_property_cookie_t>> strutCookies;
    for (const quint32 client : clients)
        strutCookies.append(
            {X11Properties::request(connection, client, partial), X11Properties::request(connection, client, full)});

    WorkAreaHints hints;
    const QList<quint32> perMonitor
        = X11Properties::values32(connection, perMonitorCookie, XCB_ATOM_CARDINAL).value_or(QList<quint32>{});
    for (qsizetype i = 0; i + 3 < perMonitor.size(); i += 4)
        hints.perMonitor.append(
            QRect(int(perMonitor[i]), int(perMonitor[i + 1]), int(perMonitor[i + 2]), int(perMonitor[i + 3])));
    for (const auto &[partialCookie, fullCookie] : std::as_const(strutCookies)) {
        const auto partialValues = X11Properties::values32(connection, partialCookie, XCB_ATOM_CARDINAL);
        const auto fullValues = X11Properties::values32(connection, fullCookie, XCB_ATOM_CARDINAL);
        const std::optional<Strut> strut = partialValues ? Strut::fromPartial(*partialValues)
            : fullValues                                 ? Strut::fromFull(*fullValues, root)
                                                         : std::nullopt;
        if (strut && hints.perMonitor.isEmpty())
            hints.struts.append(*strut);
    }
    if (hints.perMonitor.isEmpty() && desktopWide.size() >= qsizetype(desktop + 1) * 4) {
        const qsizetype i = qsizetype(desktop) * 4;
        hints.desktopWide
            = QRect(int(desktopWide[i]), int(desktopWide[i + 1]), int(desktopWide[i + 2]), int(desktopWide[i + 3]));
    }
    return hints;
}

} // namespace tessary

#include "platform/x11/windows/x11_screens.h"

#include "platform/x11/windows/x11_monitors.h"
#include "platform/x11/windows/x11_properties.h"

#include <QGuiApplication>
#include <QScreen>

#include <cstdlib>

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
    , m_clients(x11)
{
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
    xcb_connection_t *connection = m_x11.connection();
    const quint32 desktop = X11Properties::cardinals(connection, m_x11.root(), m_x11.atom("_NET_CURRENT_DESKTOP"))
                                .value_or(QList<quint32>{0})
                                .value(0);
    WorkAreaHints hints;
    const QByteArray gtkName = "_GTK_WORKAREAS_D" + QByteArray::number(desktop);
    const QList<quint32> perMonitor
        = X11Properties::cardinals(connection, m_x11.root(), m_x11.atom(gtkName)).value_or(QList<quint32>{});
    for (qsizetype i = 0; i + 3 < perMonitor.size(); i += 4)
        hints.perMonitor.append(
            QRect(int(perMonitor[i]), int(perMonitor[i + 1]), int(perMonitor[i + 2]), int(perMonitor[i + 3])));
    if (!hints.perMonitor.isEmpty())
        return hints;
    hints.struts = struts(root);
    const QList<quint32> desktopWide
        = X11Properties::cardinals(connection, m_x11.root(), m_x11.atom("_NET_WORKAREA")).value_or(QList<quint32>{});
    if (desktopWide.size() >= qsizetype(desktop + 1) * 4) {
        const qsizetype i = qsizetype(desktop) * 4;
        hints.desktopWide
            = QRect(int(desktopWide[i]), int(desktopWide[i + 1]), int(desktopWide[i + 2]), int(desktopWide[i + 3]));
    }
    return hints;
}

QList<Strut> X11Screens::struts(QSize root) const
{
    const xcb_atom_t partial = m_x11.atom("_NET_WM_STRUT_PARTIAL");
    const xcb_atom_t full = m_x11.atom("_NET_WM_STRUT");
    QList<Strut> result;
    for (const xcb_window_t window : m_clients.clientList()) {
        std::optional<Strut> strut;
        if (const auto values = X11Properties::cardinals(m_x11.connection(), window, partial))
            strut = Strut::fromPartial(*values);
        else if (const auto legacy = X11Properties::cardinals(m_x11.connection(), window, full))
            strut = Strut::fromFull(*legacy, root);
        if (strut)
            result.append(*strut);
    }
    return result;
}

} // namespace tessary

#include "app/selftest/checks/window_manager_check.h"

#include "platform/x11/windows/x11_properties.h"
#include "platform/x11/x11_connection.h"

namespace tessary {

namespace {

// What the window backends read, write or ask the window manager for.
const QList<QByteArray> &features()
{
    static const QList<QByteArray> names = {"_NET_ACTIVE_WINDOW", "_NET_CLIENT_LIST", "_NET_CLIENT_LIST_STACKING",
        "_NET_WM_STATE", "_NET_WM_STATE_FULLSCREEN", "_NET_WM_STATE_MAXIMIZED_HORZ", "_NET_WM_STATE_MAXIMIZED_VERT",
        "_NET_WM_STATE_HIDDEN", "_NET_FRAME_EXTENTS", "_NET_MOVERESIZE_WINDOW", "_NET_WM_STRUT_PARTIAL"};
    return names;
}

} // namespace

WindowManagerCheck::WindowManagerCheck(const SelfCheckContext &context)
    : SelfCheck(QStringLiteral("Window manager"))
    , m_context(context)
{
}

void WindowManagerCheck::run(Done done)
{
    const QString remedy = QStringLiteral(
        "Run a window manager that follows the EWMH standard (most do: openbox, xfwm4, KWin, Mutter, i3 …).");
    if (!m_context.x11) {
        done(noDisplay(m_context));
        return;
    }
    X11Connection &x11 = *m_context.x11;
    xcb_connection_t *connection = x11.connection();
    const QList<xcb_window_t> check
        = X11Properties::windows(connection, x11.root(), x11.atom("_NET_SUPPORTING_WM_CHECK"));
    // The child must point at itself: a stale property of a window manager that exited does not.
    const bool alive = !check.isEmpty()
        && X11Properties::windows(connection, check.first(), x11.atom("_NET_SUPPORTING_WM_CHECK")) == check;
    if (!alive) {
        done(CheckResult::failure(
            QStringLiteral("No window manager is running: windows cannot be snapped, moved between monitors or "
                           "restored."),
            remedy));
        return;
    }
    const QString name = QString::fromUtf8(
        X11Properties::bytes(connection, check.first(), x11.atom("_NET_WM_NAME")).value_or(QByteArray("unnamed")));
    const QList<xcb_atom_t> supported = X11Properties::atoms(connection, x11.root(), x11.atom("_NET_SUPPORTED"));
    QStringList missing;
    for (const QByteArray &feature : features()) {
        if (!supported.contains(x11.atom(feature)))
            missing.append(QString::fromLatin1(feature));
    }
    if (!missing.isEmpty()) {
        done(CheckResult::failure(
            QStringLiteral("%1 does not support %2.").arg(name, missing.join(QStringLiteral(", "))), remedy));
        return;
    }
    done(CheckResult::passed(
        QStringLiteral("%1, supporting all %2 EWMH features Tessary uses.").arg(name).arg(features().size())));
}

} // namespace tessary

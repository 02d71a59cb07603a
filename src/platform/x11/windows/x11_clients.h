#pragma once

#include "platform/x11/x11_connection.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace tessary {

// What the window manager and the clients publish about top-level client
// windows (EWMH and ICCCM properties, the X-Resource extension). Every query
// is a fresh round trip; windows that are gone read as empty. Main thread only.
class X11Clients {
public:
    explicit X11Clients(X11Connection &x11);

    struct WindowClass {
        QByteArray instance;
        QByteArray className;
    };

    // _NET_ACTIVE_WINDOW; XCB_WINDOW_NONE when nothing (managed) is active.
    xcb_window_t activeWindow() const;
    // Managed client windows, topmost first.
    QList<xcb_window_t> stackingTopFirst() const;
    QList<xcb_window_t> clientList() const;

    // The owning process: _NET_WM_PID, else the X-Resource extension's record
    // of the connection that created the window; 0 when neither knows it.
    qint64 pid(xcb_window_t window) const;
    WindowClass windowClass(xcb_window_t window) const;
    // _NET_WM_NAME, else WM_NAME.
    QString title(xcb_window_t window) const;
    QList<xcb_atom_t> states(xcb_window_t window) const;
    bool hasState(xcb_window_t window, const QByteArray &state) const;
    // False for docks, desktops and other windows that are not application windows.
    bool isApplicationWindow(xcb_window_t window) const;

private:
    qint64 resourcePid(xcb_window_t window) const;

    X11Connection &m_x11;
};

} // namespace tessary

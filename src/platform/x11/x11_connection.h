#pragma once

#include <QByteArray>
#include <QHash>

#include <initializer_list>

#include <xcb/xcb.h>

typedef struct _XDisplay Display;

namespace tessary {

// Qt's own X connection, shared by every X11 backend so that their requests
// and events are ordered with Qt's. Main thread only.
class X11Connection {
public:
    // Null when the application does not run on the xcb platform (offscreen,
    // Wayland): backends then report themselves unsupported.
    static X11Connection *instance();

    xcb_connection_t *connection() const { return m_connection; }
    Display *display() const { return m_display; }
    xcb_window_t root() const { return m_root; }
    // Adds property changes on the root to whatever this connection (Qt's)
    // already listens to there.
    void watchRootProperties();
    xcb_screen_t *screen() const { return m_screen; }

    // Waits until the server has processed every request sent so far, so that
    // other clients see their effect (a released grab, for instance).
    void sync() const;

    // Interned atom, cached for the life of the connection; XCB_ATOM_NONE on error.
    xcb_atom_t atom(const QByteArray &name);
    // Interns and caches `names` in one round trip: for atoms that would
    // otherwise cost one each on a first use that must be quick.
    void internAtoms(std::initializer_list<const char *> names);

private:
    X11Connection(xcb_connection_t *connection, Display *display);

    xcb_connection_t *m_connection;
    Display *m_display;
    xcb_screen_t *m_screen = nullptr;
    xcb_window_t m_root = XCB_WINDOW_NONE;
    QHash<QByteArray, xcb_atom_t> m_atoms;
};

} // namespace tessary

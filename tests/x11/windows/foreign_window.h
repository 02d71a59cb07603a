#pragma once

#include <QList>
#include <QRect>

#include <xcb/xcb.h>

namespace tessary {

// A window of another X client, made by the test on a connection of its own:
// for kinds of windows no installed client makes (docks, client-side
// decorations). It goes with its connection when the object goes.
class ForeignWindow {
public:
    explicit ForeignWindow(const QRect &geometry);
    ~ForeignWindow();

    ForeignWindow(const ForeignWindow &) = delete;
    ForeignWindow &operator=(const ForeignWindow &) = delete;

    xcb_window_t id() const { return m_window; }
    void setAtom(const char *property, const char *value);
    void setCardinals(const char *property, const QList<quint32> &values);
    // _MOTIF_WM_HINTS asking for no window-manager decorations.
    void setUndecorated();
    void map();
    // The window itself in root coordinates.
    QRect geometry() const;

private:
    xcb_atom_t atom(const char *name) const;

    xcb_connection_t *m_connection;
    xcb_window_t m_window;
};

} // namespace tessary

#pragma once

#include <QByteArray>
#include <QList>

#include <xcb/xcb.h>

#include <optional>

namespace tessary::X11Properties {

// Readers of window properties over a shared connection. Each sends one
// request and waits for its reply; a missing property, a property of another
// type or format, or a window that is gone yields none (or an empty list).

// 32-bit values of a CARDINAL property.
std::optional<QList<quint32>> cardinals(xcb_connection_t *connection, xcb_window_t window, xcb_atom_t property);
// Values of an ATOM property (such as _NET_WM_STATE).
QList<xcb_atom_t> atoms(xcb_connection_t *connection, xcb_window_t window, xcb_atom_t property);
// Values of a WINDOW property (such as _NET_CLIENT_LIST).
QList<xcb_window_t> windows(xcb_connection_t *connection, xcb_window_t window, xcb_atom_t property);
// Raw bytes of an 8-bit property of any type (WM_CLASS, UTF8_STRING names).
std::optional<QByteArray> bytes(xcb_connection_t *connection, xcb_window_t window, xcb_atom_t property);

// The same in two steps, so that several properties are read in one round
// trip: send every request first, then collect the replies. Errors (a window
// that is gone) are swallowed.
xcb_get_property_cookie_t request(xcb_connection_t *connection, xcb_window_t window, xcb_atom_t property);
// 32-bit values of `type` from the reply to `cookie`.
std::optional<QList<quint32>> values32(xcb_connection_t *connection, xcb_get_property_cookie_t cookie, xcb_atom_t type);

} // namespace tessary::X11Properties

#include "platform/x11/windows/x11_clients.h"

#include "platform/x11/windows/x11_properties.h"

#include <xcb/res.h>

#include <algorithm>
#include <cstdlib>

namespace tessary {

X11Clients::X11Clients(X11Connection &x11)
    : m_x11(x11)
{
}

xcb_window_t X11Clients::activeWindow() const
{
    const QList<xcb_window_t> active
        = X11Properties::windows(m_x11.connection(), m_x11.root(), m_x11.atom("_NET_ACTIVE_WINDOW"));
    // Window managers may leave a closed window here, whose id the server then
    // hands to another client.
    if (active.isEmpty() || !clientList().contains(active.first()))
        return XCB_WINDOW_NONE;
    return active.first();
}

QList<xcb_window_t> X11Clients::stackingTopFirst() const
{
    QList<xcb_window_t> list
        = X11Properties::windows(m_x11.connection(), m_x11.root(), m_x11.atom("_NET_CLIENT_LIST_STACKING"));
    std::reverse(list.begin(), list.end());
    return list;
}

QList<xcb_window_t> X11Clients::clientList() const
{
    return X11Properties::windows(m_x11.connection(), m_x11.root(), m_x11.atom("_NET_CLIENT_LIST"));
}

qint64 X11Clients::pid(xcb_window_t window) const
{
    const auto value = X11Properties::cardinals(m_x11.connection(), window, m_x11.atom("_NET_WM_PID"));
    if (value && value->size() == 1 && value->first() > 0)
        return value->first();
    return resourcePid(window);
}

qint64 X11Clients::resourcePid(xcb_window_t window) const
{
    xcb_connection_t *connection = m_x11.connection();
    const xcb_res_client_id_spec_t query{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto cookie = xcb_res_query_client_ids(connection, 1, &query);
    auto *reply = xcb_res_query_client_ids_reply(connection, cookie, nullptr);
    if (!reply)
        return 0;
    qint64 pid = 0;
    for (auto it = xcb_res_query_client_ids_ids_iterator(reply); it.rem; xcb_res_client_id_value_next(&it)) {
        const auto &[client, length] = *it.data;
        if ((client.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) && length == 4) {
            pid = *xcb_res_client_id_value_value(it.data);
            break;
        }
    }
    std::free(reply);
    return pid;
}

X11Clients::WindowClass X11Clients::windowClass(xcb_window_t window) const
{
    // Two NUL-terminated strings: instance, then class.
    const QByteArray raw = X11Properties::bytes(m_x11.connection(), window, XCB_ATOM_WM_CLASS).value_or(QByteArray());
    const QList<QByteArray> parts = raw.split('\0');
    WindowClass result;
    if (!parts.isEmpty())
        result.instance = parts.at(0);
    if (parts.size() > 1)
        result.className = parts.at(1);
    return result;
}

QString X11Clients::title(xcb_window_t window) const
{
    if (const auto name = X11Properties::bytes(m_x11.connection(), window, m_x11.atom("_NET_WM_NAME")))
        return QString::fromUtf8(*name);
    return QString::fromLocal8Bit(
        X11Properties::bytes(m_x11.connection(), window, XCB_ATOM_WM_NAME).value_or(QByteArray()));
}

QList<xcb_atom_t> X11Clients::states(xcb_window_t window) const
{
    return X11Properties::atoms(m_x11.connection(), window, m_x11.atom("_NET_WM_STATE"));
}

bool X11Clients::hasState(xcb_window_t window, const QByteArray &state) const
{
    return states(window).contains(m_x11.atom(state));
}

bool X11Clients::isApplicationWindow(xcb_window_t window) const
{
    const QList<xcb_atom_t> types = X11Properties::atoms(m_x11.connection(), window, m_x11.atom("_NET_WM_WINDOW_TYPE"));
    for (const char *excluded : {"_NET_WM_WINDOW_TYPE_DOCK", "_NET_WM_WINDOW_TYPE_DESKTOP"}) {
        if (types.contains(m_x11.atom(excluded)))
            return false;
    }
    return true;
}

} // namespace tessary

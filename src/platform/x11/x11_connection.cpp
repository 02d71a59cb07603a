#include "platform/x11/x11_connection.h"

#include <QGuiApplication>
#include <QList>

#include <cstdlib>
#include <memory>
#include <utility>

namespace tessary {

X11Connection::X11Connection(xcb_connection_t *connection, Display *display)
    : m_connection(connection)
    , m_display(display)
{
    m_screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
    m_root = m_screen ? m_screen->root : xcb_window_t(XCB_WINDOW_NONE);
}

X11Connection *X11Connection::instance()
{
    static std::unique_ptr<X11Connection> shared = []() -> std::unique_ptr<X11Connection> {
        auto *app = qGuiApp;
        if (!app)
            return nullptr;
        auto *x11 = app->nativeInterface<QNativeInterface::QX11Application>();
        // Under the offscreen platform the interface exists but has no connection.
        if (!x11 || !x11->connection())
            return nullptr;
        return std::unique_ptr<X11Connection>(new X11Connection(x11->connection(), x11->display()));
    }();
    return shared.get();
}

void X11Connection::sync() const
{
    std::free(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
}

xcb_atom_t X11Connection::atom(const QByteArray &name)
{
    const auto cached = m_atoms.constFind(name);
    if (cached != m_atoms.cend())
        return *cached;
    const auto cookie = xcb_intern_atom(m_connection, 0, static_cast<uint16_t>(name.size()), name.constData());
    xcb_intern_atom_reply_t *reply = xcb_intern_atom_reply(m_connection, cookie, nullptr);
    const xcb_atom_t value = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    std::free(reply);
    if (value != XCB_ATOM_NONE)
        m_atoms.insert(name, value);
    return value;
}

void X11Connection::internAtoms(std::initializer_list<const char *> names)
{
    QList<std::pair<QByteArray, xcb_intern_atom_cookie_t>> pending;
    for (const char *name : names) {
        const QByteArray key(name);
        if (!m_atoms.contains(key))
            pending.append({key, xcb_intern_atom(m_connection, 0, uint16_t(key.size()), key.constData())});
    }
    for (const auto &[name, cookie] : std::as_const(pending)) {
        xcb_intern_atom_reply_t *reply = xcb_intern_atom_reply(m_connection, cookie, nullptr);
        if (reply && reply->atom != XCB_ATOM_NONE)
            m_atoms.insert(name, reply->atom);
        std::free(reply);
    }
}

void X11Connection::watchRootProperties()
{
    const auto cookie = xcb_get_window_attributes(m_connection, m_root);
    if (auto *attributes = xcb_get_window_attributes_reply(m_connection, cookie, nullptr)) {
        if (!(attributes->your_event_mask & XCB_EVENT_MASK_PROPERTY_CHANGE)) {
            const uint32_t mask = attributes->your_event_mask | XCB_EVENT_MASK_PROPERTY_CHANGE;
            xcb_change_window_attributes(m_connection, m_root, XCB_CW_EVENT_MASK, &mask);
            xcb_flush(m_connection);
        }
        std::free(attributes);
    }
}

} // namespace tessary

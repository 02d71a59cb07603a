#include "foreign_window.h"

#include <cstdlib>
#include <cstring>

namespace tessary {

ForeignWindow::ForeignWindow(const QRect &geometry)
    : m_connection(xcb_connect(nullptr, nullptr))
    , m_window(xcb_generate_id(m_connection))
{
    const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, screen->root, int16_t(geometry.x()),
        int16_t(geometry.y()), uint16_t(geometry.width()), uint16_t(geometry.height()), 0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0, nullptr);
}

ForeignWindow::~ForeignWindow() { xcb_disconnect(m_connection); }

void ForeignWindow::setAtom(const char *property, const char *value)
{
    const xcb_atom_t data = atom(value);
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_window, atom(property), XCB_ATOM_ATOM, 32, 1, &data);
}

void ForeignWindow::setCardinals(const char *property, const QList<quint32> &values)
{
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_window, atom(property), XCB_ATOM_CARDINAL, 32,
        uint32_t(values.size()), values.constData());
}

void ForeignWindow::setUndecorated()
{
    // flags = decorations given; decorations = none.
    const uint32_t hints[5] = {2, 0, 0, 0, 0};
    const xcb_atom_t motif = atom("_MOTIF_WM_HINTS");
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_window, motif, motif, 32, 5, hints);
}

void ForeignWindow::map()
{
    xcb_map_window(m_connection, m_window);
    xcb_flush(m_connection);
}

QRect ForeignWindow::geometry() const
{
    auto *geometry = xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, m_window), nullptr);
    const xcb_window_t root = geometry ? geometry->root : xcb_window_t(XCB_WINDOW_NONE);
    auto *origin = xcb_translate_coordinates_reply(
        m_connection, xcb_translate_coordinates(m_connection, m_window, root, 0, 0), nullptr);
    QRect rect;
    if (geometry && origin)
        rect = QRect(origin->dst_x, origin->dst_y, geometry->width, geometry->height);
    std::free(geometry);
    std::free(origin);
    return rect;
}

xcb_atom_t ForeignWindow::atom(const char *name) const
{
    auto *reply = xcb_intern_atom_reply(
        m_connection, xcb_intern_atom(m_connection, 0, uint16_t(std::strlen(name)), name), nullptr);
    const xcb_atom_t value = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    std::free(reply);
    return value;
}

} // namespace tessary

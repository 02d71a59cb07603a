#include "platform/x11/windows/x11_window_frames.h"

#include "platform/x11/windows/x11_properties.h"

#include <xcb/xcb_icccm.h>

#include <cstdlib>

namespace tessary {
namespace {

// _NET_MOVERESIZE_WINDOW flags: NorthWest gravity, x/y/width/height present,
// sent by a pager (so the window manager obeys rather than second-guesses).
constexpr uint32_t northWestGravity = 1;
constexpr uint32_t allFields = (1u << 8) | (1u << 9) | (1u << 10) | (1u << 11);
constexpr uint32_t fromPager = 2u << 12;
constexpr uint32_t stateRemove = 0;

} // namespace

X11WindowFrames::X11WindowFrames(X11Connection &x11)
    : m_x11(x11)
{
}

QRect X11WindowFrames::Placement::visible() const
{
    return QRect(client.x() - border - decorations.left + shadow.left,
        client.y() - border - decorations.top + shadow.top,
        client.width() + 2 * border + decorations.left + decorations.right - shadow.left - shadow.right,
        client.height() + 2 * border + decorations.top + decorations.bottom - shadow.top - shadow.bottom);
}

std::optional<QRect> X11WindowFrames::visibleFrame(xcb_window_t window) const
{
    const std::optional<Placement> placement = measure(window);
    if (!placement)
        return std::nullopt;
    return placement->visible();
}

std::optional<X11WindowFrames::Placement> X11WindowFrames::measure(xcb_window_t window) const
{
    xcb_connection_t *connection = m_x11.connection();
    const auto geometryCookie = xcb_get_geometry(connection, window);
    const auto originCookie = xcb_translate_coordinates(connection, window, m_x11.root(), 0, 0);
    const auto decorationsCookie = X11Properties::request(connection, window, m_x11.atom("_NET_FRAME_EXTENTS"));
    const auto shadowCookie = X11Properties::request(connection, window, m_x11.atom("_GTK_FRAME_EXTENTS"));
    const auto stateCookie = X11Properties::request(connection, window, m_x11.atom("_NET_WM_STATE"));
    xcb_generic_error_t *geometryError = nullptr;
    xcb_generic_error_t *originError = nullptr;
    auto *geometry = xcb_get_geometry_reply(connection, geometryCookie, &geometryError);
    auto *origin = xcb_translate_coordinates_reply(connection, originCookie, &originError);
    const auto extents = [connection](xcb_get_property_cookie_t cookie) -> Extents {
        const auto values = X11Properties::values32(connection, cookie, XCB_ATOM_CARDINAL);
        if (!values || values->size() != 4)
            return {};
        return {int(values->at(0)), int(values->at(1)), int(values->at(2)), int(values->at(3))};
    };
    const Extents decorations = extents(decorationsCookie);
    const Extents shadow = extents(shadowCookie);
    const QList<quint32> states
        = X11Properties::values32(connection, stateCookie, XCB_ATOM_ATOM).value_or(QList<quint32>{});
    std::optional<Placement> placement;
    if (geometry && origin) {
        placement.emplace();
        placement->client = QRect(origin->dst_x, origin->dst_y, geometry->width, geometry->height);
        placement->border = geometry->border_width;
        placement->decorations = decorations;
        placement->shadow = shadow;
        placement->maximized = states.contains(m_x11.atom("_NET_WM_STATE_MAXIMIZED_VERT"))
            || states.contains(m_x11.atom("_NET_WM_STATE_MAXIMIZED_HORZ"));
    }
    std::free(geometry);
    std::free(origin);
    std::free(geometryError);
    std::free(originError);
    return placement;
}

xcb_window_t X11WindowFrames::topLevel(xcb_window_t window) const
{
    xcb_connection_t *connection = m_x11.connection();
    // Window managers nest a client two levels deep at most; the bound only
    // guards against a tree that changes while it is walked.
    for (int depth = 0; depth < 8; ++depth) {
        xcb_generic_error_t *error = nullptr;
        auto *tree = xcb_query_tree_reply(connection, xcb_query_tree(connection, window), &error);
        std::free(error);
        if (!tree)
            break;
        const xcb_window_t parent = tree->parent;
        std::free(tree);
        if (parent == m_x11.root() || parent == XCB_WINDOW_NONE)
            break;
        window = parent;
    }
    return window;
}

SizeHints X11WindowFrames::sizeHints(xcb_window_t window) const
{
    SizeHints hints;
    xcb_size_hints_t raw{};
    const auto cookie = xcb_icccm_get_wm_normal_hints(m_x11.connection(), window);
    if (!xcb_icccm_get_wm_normal_hints_reply(m_x11.connection(), cookie, &raw, nullptr))
        return hints;
    if (raw.flags & XCB_ICCCM_SIZE_HINT_P_MIN_SIZE)
        hints.minimum = QSize(raw.min_width, raw.min_height);
    if (raw.flags & XCB_ICCCM_SIZE_HINT_P_MAX_SIZE)
        hints.maximum = QSize(raw.max_width, raw.max_height);
    if (raw.flags & XCB_ICCCM_SIZE_HINT_BASE_SIZE)
        hints.base = QSize(raw.base_width, raw.base_height);
    if (raw.flags & XCB_ICCCM_SIZE_HINT_P_RESIZE_INC)
        hints.increment = QSize(raw.width_inc, raw.height_inc);
    return hints;
}

X11WindowFrames::Request X11WindowFrames::request(const Placement &now, const SizeHints &hints, const QRect &target)
{
    const Extents &d = now.decorations;
    const Extents &s = now.shadow;
    const int extraWidth = 2 * now.border + d.left + d.right - s.left - s.right;
    const int extraHeight = 2 * now.border + d.top + d.bottom - s.top - s.bottom;
    const QSize client(target.width() - extraWidth, target.height() - extraHeight);
    const QSize expected = hints.constrain(client);
    return {QRect(QPoint(target.x() - s.left, target.y() - s.top), client),
        QRect(target.topLeft(), QSize(expected.width() + extraWidth, expected.height() + extraHeight))};
}

void X11WindowFrames::sendUnmaximize(xcb_window_t window)
{
    sendClientMessage(window, m_x11.atom("_NET_WM_STATE"),
        {stateRemove, m_x11.atom("_NET_WM_STATE_MAXIMIZED_VERT"), m_x11.atom("_NET_WM_STATE_MAXIMIZED_HORZ"), 2, 0});
}

void X11WindowFrames::send(xcb_window_t window, const Request &request)
{
    const QRect &g = request.geometry;
    if (supports("_NET_MOVERESIZE_WINDOW")) {
        sendClientMessage(window, m_x11.atom("_NET_MOVERESIZE_WINDOW"),
            {northWestGravity | allFields | fromPager, uint32_t(g.x()), uint32_t(g.y()), uint32_t(g.width()),
                uint32_t(g.height())});
        return;
    }
    const uint32_t values[] = {uint32_t(g.x()), uint32_t(g.y()), uint32_t(g.width()), uint32_t(g.height())};
    xcb_configure_window(m_x11.connection(), window,
        XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values);
    xcb_flush(m_x11.connection());
}

void X11WindowFrames::sendClientMessage(xcb_window_t window, xcb_atom_t type, const uint32_t (&data)[5])
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = type;
    for (int i = 0; i < 5; ++i)
        event.data.data32[i] = data[i];
    xcb_send_event(m_x11.connection(), 0, m_x11.root(),
        XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
        reinterpret_cast<const char *>(&event));
    xcb_flush(m_x11.connection());
}

bool X11WindowFrames::supports(const char *hint) const
{
    return X11Properties::atoms(m_x11.connection(), m_x11.root(), m_x11.atom("_NET_SUPPORTED"))
        .contains(m_x11.atom(hint));
}

} // namespace tessary

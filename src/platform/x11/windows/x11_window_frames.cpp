#include "platform/x11/windows/x11_window_frames.h"

#include "platform/x11/windows/x11_properties.h"
#include "platform/x11/windows/x11_windows_logging.h"

#include <xcb/xcb_icccm.h>

#include <cstdlib>
#include <thread>

namespace tessary {
namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::microseconds pollInterval{500};
// A frame that differs from the expected one counts as final once it has
// stayed the same this long (the window manager constrained it its own way).
// Window managers move the frame and resize the client in separate requests;
// under load the gap between them was seen to exceed 20 ms.
constexpr std::chrono::milliseconds stableFor{100};
constexpr std::chrono::milliseconds decorationWait{100};

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
    auto *geometry = xcb_get_geometry_reply(connection, geometryCookie, nullptr);
    auto *origin = xcb_translate_coordinates_reply(connection, originCookie, nullptr);
    std::optional<Placement> placement;
    if (geometry && origin) {
        placement.emplace();
        placement->client = QRect(origin->dst_x, origin->dst_y, geometry->width, geometry->height);
        placement->border = geometry->border_width;
    }
    std::free(geometry);
    std::free(origin);
    if (placement) {
        placement->decorations = extents(window, "_NET_FRAME_EXTENTS");
        placement->shadow = extents(window, "_GTK_FRAME_EXTENTS");
    }
    return placement;
}

X11WindowFrames::Extents X11WindowFrames::extents(xcb_window_t window, const char *property) const
{
    const auto values = X11Properties::cardinals(m_x11.connection(), window, m_x11.atom(property));
    if (!values || values->size() != 4)
        return {};
    return {int(values->at(0)), int(values->at(1)), int(values->at(2)), int(values->at(3))};
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

X11WindowFrames::Request X11WindowFrames::request(
    const Placement &now, const SizeHints &hints, const QRect &target) const
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

bool X11WindowFrames::setVisibleFrame(xcb_window_t window, const QRect &target)
{
    if (!unmaximize(window))
        return false;
    const std::optional<Placement> before = measure(window);
    if (!before)
        return false;
    const SizeHints hints = sizeHints(window);
    const Request first = request(*before, hints, target);
    if (before->visible() == first.expectedVisible)
        return true;
    send(window, first);
    std::optional<Placement> after = settle(window, before->visible(), first.expectedVisible);
    if (!after)
        return false;
    if (after->visible() != first.expectedVisible) {
        // The decorations changed under the request (un-maximizing updates
        // them at its own pace): ask again with what the frame is now.
        const Request second = request(*after, hints, target);
        if (!(second == first)) {
            send(window, second);
            after = settle(window, after->visible(), second.expectedVisible);
            if (!after)
                return false;
        }
    }
    if (after->visible() == before->visible()) {
        qCDebug(lcX11Windows) << "window" << Qt::hex << window << "did not move to" << target;
        return false;
    }
    return true;
}

bool X11WindowFrames::unmaximize(xcb_window_t window)
{
    const xcb_atom_t vertical = m_x11.atom("_NET_WM_STATE_MAXIMIZED_VERT");
    const xcb_atom_t horizontal = m_x11.atom("_NET_WM_STATE_MAXIMIZED_HORZ");
    const xcb_atom_t stateAtom = m_x11.atom("_NET_WM_STATE");
    const auto isMaximized = [&] {
        const QList<xcb_atom_t> states = X11Properties::atoms(m_x11.connection(), window, stateAtom);
        return states.contains(vertical) || states.contains(horizontal);
    };
    if (!isMaximized())
        return true;
    // The state and the decorations change at different moments, in either
    // order; a window manager that decorates both alike leaves the extents
    // as they are, hence the shorter bound on that wait.
    const Extents maximizedDecorations = extents(window, "_NET_FRAME_EXTENTS");
    sendClientMessage(window, stateAtom, {stateRemove, vertical, horizontal, 2, 0});
    const auto start = Clock::now();
    while (isMaximized()) {
        if (Clock::now() - start > settleTimeout)
            return false;
        std::this_thread::sleep_for(pollInterval);
    }
    while (extents(window, "_NET_FRAME_EXTENTS") == maximizedDecorations && Clock::now() - start < decorationWait)
        std::this_thread::sleep_for(pollInterval);
    return true;
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

std::optional<X11WindowFrames::Placement> X11WindowFrames::settle(
    xcb_window_t window, const QRect &before, const QRect &expected) const
{
    const auto start = Clock::now();
    QRect last = before;
    auto lastChange = start;
    while (true) {
        std::optional<Placement> now = measure(window);
        if (!now)
            return std::nullopt;
        const QRect visible = now->visible();
        if (visible == expected)
            return now;
        const auto time = Clock::now();
        if (visible != last) {
            last = visible;
            lastChange = time;
        } else if (visible != before && time - lastChange >= stableFor) {
            return now;
        }
        if (time - start > settleTimeout)
            return now;
        std::this_thread::sleep_for(pollInterval);
    }
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

#include "test_desktop.h"

#include "platform/x11/windows/x11_clients.h"

#include <QCoreApplication>
#include <QMargins>
#include <QTest>

#include <xcb/xcb_icccm.h>

#include <cstdlib>

namespace tessary {

TestDesktop::TestDesktop()
    : m_x11(X11Connection::instance())
{
    if (!m_x11)
        qFatal("X11 tests need the xcb platform");
}

TestDesktop::~TestDesktop()
{
    for (const auto &process : m_processes) {
        process->kill();
        process->waitForFinished(2000);
    }
}

TestDesktop::Client TestDesktop::launch(const QString &program, const QStringList &arguments)
{
    auto process = std::make_unique<QProcess>();
    process->start(program, arguments);
    if (!process->waitForStarted(5000))
        return {};
    const qint64 pid = process->processId();
    m_processes.push_back(std::move(process));
    const X11Clients clients(*m_x11);
    Client client{XCB_WINDOW_NONE, pid};
    // Window ids are reused once their client is gone, and the window manager
    // may still name a closed window as active: only a window it manages,
    // framed, active and owned by the new process counts.
    waitFor([&] {
        const xcb_window_t active = clients.activeWindow();
        if (active != XCB_WINDOW_NONE && clients.clientList().contains(active) && clients.pid(active) == pid
            && managedFrame(active) != clientGeometry(active))
            client.window = active;
        return client.window != XCB_WINDOW_NONE;
    });
    return client;
}

QRect TestDesktop::managedFrame(xcb_window_t client) const
{
    xcb_connection_t *connection = m_x11->connection();
    auto *extents = xcb_get_property_reply(connection,
        xcb_get_property(connection, 0, client, m_x11->atom("_NET_FRAME_EXTENTS"), XCB_ATOM_CARDINAL, 0, 4), nullptr);
    if (extents && xcb_get_property_value_length(extents) == 16) {
        const auto *e = static_cast<const uint32_t *>(xcb_get_property_value(extents));
        const QMargins margins{int(e[0]), int(e[2]), int(e[1]), int(e[3])};
        std::free(extents);
        return clientGeometry(client).marginsAdded(margins);
    }
    std::free(extents);
    xcb_window_t window = client;
    while (true) {
        auto *tree = xcb_query_tree_reply(connection, xcb_query_tree(connection, window), nullptr);
        if (!tree)
            return {};
        const xcb_window_t parent = tree->parent;
        std::free(tree);
        if (parent == m_x11->root() || parent == XCB_WINDOW_NONE)
            break;
        window = parent;
    }
    auto *geometry = xcb_get_geometry_reply(connection, xcb_get_geometry(connection, window), nullptr);
    if (!geometry)
        return {};
    const int border = geometry->border_width;
    const QRect frame(geometry->x, geometry->y, geometry->width + 2 * border, geometry->height + 2 * border);
    std::free(geometry);
    return frame;
}

QRect TestDesktop::clientGeometry(xcb_window_t client) const
{
    xcb_connection_t *connection = m_x11->connection();
    auto *geometry = xcb_get_geometry_reply(connection, xcb_get_geometry(connection, client), nullptr);
    auto *origin = xcb_translate_coordinates_reply(
        connection, xcb_translate_coordinates(connection, client, m_x11->root(), 0, 0), nullptr);
    QRect rect;
    if (geometry && origin)
        rect = QRect(origin->dst_x, origin->dst_y, geometry->width, geometry->height);
    std::free(geometry);
    std::free(origin);
    return rect;
}

QSize TestDesktop::sizeIncrement(xcb_window_t client) const
{
    xcb_size_hints_t hints{};
    const auto cookie = xcb_icccm_get_wm_normal_hints(m_x11->connection(), client);
    if (xcb_icccm_get_wm_normal_hints_reply(m_x11->connection(), cookie, &hints, nullptr)
        && (hints.flags & XCB_ICCCM_SIZE_HINT_P_RESIZE_INC) && hints.width_inc > 0 && hints.height_inc > 0)
        return QSize(hints.width_inc, hints.height_inc);
    return QSize(1, 1);
}

xcb_window_t TestDesktop::activeWindow() const { return X11Clients(*m_x11).activeWindow(); }

bool TestDesktop::hasState(xcb_window_t client, const char *state) const
{
    return X11Clients(*m_x11).hasState(client, state);
}

void TestDesktop::changeState(xcb_window_t client, bool add, const char *state)
{
    sendToWindowManager(client, "_NET_WM_STATE", {add ? 1u : 0u, m_x11->atom(state), 0, 2, 0});
}

void TestDesktop::activate(xcb_window_t client)
{
    sendToWindowManager(client, "_NET_ACTIVE_WINDOW", {2, XCB_CURRENT_TIME, 0, 0, 0});
}

void TestDesktop::sendToWindowManager(xcb_window_t client, const char *type, std::array<uint32_t, 5> data)
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = client;
    event.type = m_x11->atom(type);
    for (int i = 0; i < 5; ++i)
        event.data.data32[i] = data[size_t(i)];
    xcb_send_event(m_x11->connection(), 0, m_x11->root(),
        XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
        reinterpret_cast<const char *>(&event));
    xcb_flush(m_x11->connection());
}

bool TestDesktop::run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    return process.waitForFinished(5000) && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

bool TestDesktop::waitFor(const std::function<bool()> &condition, int timeoutMs)
{
    return QTest::qWaitFor(condition, timeoutMs);
}

} // namespace tessary

// Time from a hot key press to the X server reporting the snapped window's new
// geometry: XTest key events → the X11 hot key grab → HotKeyCenter (deferred to
// the next event loop turn) → WindowManager::apply → the window manager moves
// the window → a second connection sees the new frame. Also reports the
// longest event-loop stall over the snaps: the longest gap between the turns
// of a 1 ms timer while the snaps run to their end, in wall time (waits for
// the X server and preemption by other processes included) and in the main
// thread's own processor time.
//
// Needs a running X session with a window manager, for example the test one
// (openbox, or xfwm4 or mutter as its last argument):
//   tests/x11/session/xsession.sh start 75 /tmp/tessary-bench [xfwm4|mutter]
//   DISPLAY=:75 QT_QPA_PLATFORM=xcb build/<dir>/bench/windows/tessary_bench_hot_key_snap
#include "core/shortcuts/hot_key_center.h"
#include "core/windows/ax.h"
#include "core/windows/geometry.h"
#include "core/windows/window_manager.h"
#include "platform/x11/windows/x11_accessibility.h"
#include "platform/x11/windows/x11_clients.h"
#include "platform/x11/windows/x11_hot_key_service.h"
#include "platform/x11/windows/x11_key_positions.h"
#include "platform/x11/windows/x11_screens.h"
#include "platform/x11/windows/x11_workspace.h"
#include "x11_bench_input.h"

#include <benchmark/benchmark.h>

#include <QEventLoop>
#include <QGuiApplication>
#include <QMargins>
#include <QProcess>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <vector>

namespace tessary {
namespace {

using Clock = std::chrono::steady_clock;

struct Keys {
    xcb_keycode_t control, alt, left, right;
};

// The frame the user sees around `client`, read over `connection` (not the
// one under test): grown by the published frame extents (mutter's frame
// window also holds invisible borders), else the root's child that holds it.
QRect managedFrame(xcb_connection_t *connection, xcb_window_t root, xcb_window_t client)
{
    static const xcb_atom_t extentsAtom = [connection] {
        auto *reply
            = xcb_intern_atom_reply(connection, xcb_intern_atom(connection, 0, 18, "_NET_FRAME_EXTENTS"), nullptr);
        const xcb_atom_t atom = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
        std::free(reply);
        return atom;
    }();
    auto *extents = xcb_get_property_reply(
        connection, xcb_get_property(connection, 0, client, extentsAtom, XCB_ATOM_CARDINAL, 0, 4), nullptr);
    auto *origin = xcb_translate_coordinates_reply(
        connection, xcb_translate_coordinates(connection, client, root, 0, 0), nullptr);
    auto *size = xcb_get_geometry_reply(connection, xcb_get_geometry(connection, client), nullptr);
    QRect visible;
    if (extents && xcb_get_property_value_length(extents) == 16 && origin && size) {
        const auto *e = static_cast<const uint32_t *>(xcb_get_property_value(extents));
        visible = QRect(origin->dst_x, origin->dst_y, size->width, size->height)
                      .marginsAdded(QMargins{int(e[0]), int(e[2]), int(e[1]), int(e[3])});
    }
    std::free(extents);
    std::free(origin);
    std::free(size);
    if (!visible.isNull())
        return visible;
    xcb_window_t window = client;
    while (auto *tree = xcb_query_tree_reply(connection, xcb_query_tree(connection, window), nullptr)) {
        const xcb_window_t parent = tree->parent;
        std::free(tree);
        if (parent == root || parent == XCB_WINDOW_NONE)
            break;
        window = parent;
    }
    auto *geometry = xcb_get_geometry_reply(connection, xcb_get_geometry(connection, window), nullptr);
    if (!geometry)
        return {};
    const QRect frame(geometry->x, geometry->y, geometry->width, geometry->height);
    std::free(geometry);
    return frame;
}

double threadCpuMillis()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1000 + double(now.tv_nsec) / 1e6;
}

void BM_HotKeyToNewGeometry(benchmark::State &state)
{
    X11Connection *x11 = X11Connection::instance();
    if (!x11) {
        state.SkipWithError("needs the xcb platform on an X session with a window manager");
        return;
    }
    QProcess xlogo;
    xlogo.start(QStringLiteral("xlogo"), {QStringLiteral("-geometry"), QStringLiteral("300x200+400+300")});
    const X11Clients clients(*x11);
    xcb_window_t window = XCB_WINDOW_NONE;
    for (const auto start = Clock::now();
         window == XCB_WINDOW_NONE && Clock::now() - start < std::chrono::seconds(10);) {
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        QThread::msleep(5);
        const xcb_window_t active = clients.activeWindow();
        if (active != XCB_WINDOW_NONE && clients.pid(active) == xlogo.processId())
            window = active;
    }
    if (window == XCB_WINDOW_NONE) {
        state.SkipWithError("xlogo did not become active");
        return;
    }

    X11Accessibility accessibility(*x11);
    X11Workspace workspace(*x11);
    X11Screens screens(*x11);
    WindowManager manager(accessibility, workspace, screens);
    manager.setGap(8);
    X11KeyPositions positions(*x11);
    X11HotKeyService service(*x11, positions);
    HotKeyCenter center(service);
    int handled = 0;
    int completed = 0;
    Clock::time_point handlerStart, handlerEnd;
    const auto snap = [&](Layout layout) {
        return [&, layout] {
            handlerStart = Clock::now();
            if (const auto front = AX::frontWindow(workspace, accessibility))
                manager.apply(layout, front->window, front->app.pid,
                    [&completed](const WindowManager::ApplyResult &) { ++completed; });
            handlerEnd = Clock::now();
            ++handled;
        };
    };
    if (!center.registerHotKey({123, KeyCombo::control | KeyCombo::option}, snap(Layout::leftHalf))
        || !center.registerHotKey({124, KeyCombo::control | KeyCombo::option}, snap(Layout::rightHalf))) {
        state.SkipWithError("ctrl+alt+left/right are taken");
        return;
    }
    const QList<ScreenInfo> displays = screens.screens();
    const auto expected = [&](Layout layout) {
        const Rect r = Geometry::flip(
            Geometry::target(layout, displays.first().visible, 8, std::nullopt), displays.first().frame.height);
        return QRect(int(r.x), int(r.y), int(r.width), int(r.height));
    };
    const QRect targets[] = {expected(Layout::leftHalf), expected(Layout::rightHalf)};

    xcb_connection_t *observer = xcb_connect(nullptr, nullptr);
    xcb_connection_t *keyboard = xcb_connect(nullptr, nullptr);
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(observer)).data->root;
    const Keys keys{BenchInput::keycodeOf(keyboard, BenchInput::controlL),
        BenchInput::keycodeOf(keyboard, BenchInput::altL), BenchInput::keycodeOf(keyboard, BenchInput::left),
        BenchInput::keycodeOf(keyboard, BenchInput::right)};
    std::vector<double> millis, toHandler, inHandler;
    // The event loop's pulse: a gap between two beats is a stall.
    QTimer heartbeat;
    heartbeat.setTimerType(Qt::PreciseTimer);
    heartbeat.setInterval(1);
    Clock::time_point lastBeat = Clock::now();
    double lastBeatCpu = threadCpuMillis();
    Clock::duration longestStall{};
    double longestStallCpu = 0;
    QObject::connect(&heartbeat, &QTimer::timeout, [&] {
        const auto now = Clock::now();
        const double cpu = threadCpuMillis();
        longestStall = std::max(longestStall, now - lastBeat);
        longestStallCpu = std::max(longestStallCpu, cpu - lastBeatCpu);
        lastBeat = now;
        lastBeatCpu = cpu;
    });
    int turn = 0;
    for (auto _ : state) {
        const int side = turn++ % 2;
        const int before = handled;
        const int finished = completed;
        lastBeat = Clock::now();
        lastBeatCpu = threadCpuMillis();
        heartbeat.start();
        const auto start = Clock::now();
        BenchInput::pressChord(keyboard, {keys.control, keys.alt, side == 0 ? keys.left : keys.right});
        bool arrived = false;
        while (!arrived) {
            QCoreApplication::processEvents(QEventLoop::AllEvents);
            arrived = handled > before && managedFrame(observer, root, window) == targets[side];
            if (Clock::now() - start > std::chrono::seconds(2)) {
                state.SkipWithError("the window did not reach its target");
                break;
            }
        }
        const std::chrono::duration<double> elapsed = Clock::now() - start;
        // The snap ends when the window manager's last word is in; the next
        // one starts after it, as a user's next press would.
        while (completed == finished && Clock::now() - start < std::chrono::seconds(2))
            QCoreApplication::processEvents(QEventLoop::AllEvents);
        heartbeat.stop();
        state.SetIterationTime(elapsed.count());
        millis.push_back(elapsed.count() * 1000);
        toHandler.push_back(std::chrono::duration<double, std::milli>(handlerStart - start).count());
        inHandler.push_back(std::chrono::duration<double, std::milli>(handlerEnd - handlerStart).count());
    }
    xcb_disconnect(observer);
    xcb_disconnect(keyboard);
    xlogo.kill();
    xlogo.waitForFinished();

    if (millis.empty())
        return;
    const auto median = [](std::vector<double> values) {
        std::sort(values.begin(), values.end());
        return values[values.size() / 2];
    };
    std::sort(millis.begin(), millis.end());
    state.counters["median_ms"] = millis[millis.size() / 2];
    state.counters["p90_ms"] = millis[millis.size() * 9 / 10];
    // Where the median goes: reaching the handler, then the snap itself.
    state.counters["to_handler_ms"] = median(toHandler);
    state.counters["apply_ms"] = median(inHandler);
    state.counters["longest_apply_ms"] = *std::max_element(inHandler.begin(), inHandler.end());
    state.counters["longest_stall_ms"] = std::chrono::duration<double, std::milli>(longestStall).count();
    state.counters["longest_stall_cpu_ms"] = longestStallCpu;
}
BENCHMARK(BM_HotKeyToNewGeometry)->Iterations(100)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace tessary

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

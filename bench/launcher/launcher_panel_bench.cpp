// The launcher panel of the built tessary, measured from outside as a user
// meets it: time from the hot key press (XTest) until the panel is mapped and
// has the input focus, over 50 open/close cycles, and the resident memory
// after the first and after the last cycle.
//
// Needs a running X session with a window manager, for example the test one:
//   tests/x11/session/xsession.sh start 75 /tmp/tessary-bench
//   DISPLAY=:75 build/<dir>/bench/launcher/tessary_bench_launcher_panel [tessary binary]
#include "x11_bench_input.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

QString binary = QStringLiteral(TESSARY_BINARY);

// The focused window when it is 680 wide (the launcher), else none.
xcb_window_t focusedPanel(xcb_connection_t *connection)
{
    auto *focus = xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr);
    if (!focus)
        return XCB_WINDOW_NONE;
    const xcb_window_t window = focus->focus;
    std::free(focus);
    auto *geometry = xcb_get_geometry_reply(connection, xcb_get_geometry(connection, window), nullptr);
    const bool panel = geometry && geometry->width == 680;
    std::free(geometry);
    return panel ? window : xcb_window_t(XCB_WINDOW_NONE);
}

void BM_HotKeyToFocusedPanel(benchmark::State &state)
{
    using namespace tessary::BenchInput;
    QTemporaryDir home;
    QProcess tessary;
    if (!startTessary(tessary, binary, home.path())) {
        state.SkipWithError("tessary did not start");
        return;
    }
    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    const std::initializer_list<xcb_keycode_t> hotKey
        = {keycodeOf(connection, controlL), keycodeOf(connection, altL), keycodeOf(connection, space)};
    const xcb_keycode_t escapeKey = keycodeOf(connection, escape);
    std::vector<double> millis;
    double firstCycleMiB = 0;
    for (auto _ : state) {
        const auto start = Clock::now();
        pressChord(connection, hotKey);
        xcb_window_t panel = XCB_WINDOW_NONE;
        while ((panel = focusedPanel(connection)) == XCB_WINDOW_NONE) {
            if (Clock::now() - start > std::chrono::seconds(2)) {
                state.SkipWithError("the panel did not take the focus");
                break;
            }
        }
        const std::chrono::duration<double> elapsed = Clock::now() - start;
        state.SetIterationTime(elapsed.count());
        millis.push_back(elapsed.count() * 1000);
        pressChord(connection, {escapeKey});
        QTest::qWait(50);
        if (millis.size() == 1)
            firstCycleMiB = residentMiB(tessary.processId());
    }
    state.counters["rss_first_MiB"] = firstCycleMiB;
    state.counters["rss_last_MiB"] = residentMiB(tessary.processId());
    xcb_disconnect(connection);
    tessary.terminate();
    tessary.waitForFinished();
    if (millis.empty())
        return;
    std::sort(millis.begin(), millis.end());
    state.counters["median_ms"] = millis[millis.size() / 2];
    state.counters["p90_ms"] = millis[millis.size() * 9 / 10];
}
BENCHMARK(BM_HotKeyToFocusedPanel)->Iterations(50)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (argc > 1)
        binary = QString::fromLocal8Bit(argv[1]);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

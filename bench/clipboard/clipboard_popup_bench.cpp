// The clipboard popup of the built tessary over a 1,000-entry history with
// 100 pictures, measured from outside as a user meets it: time from the hot
// key press (XTest) until the popup is mapped and has the input focus, over
// 30 open/close cycles; then the resident memory after opening it once more
// and moving the selection through every row (every thumbnail decoded).
//
// Needs a running X session with a window manager, for example the test one:
//   tests/x11/session/xsession.sh start 75 /tmp/tessary-bench
//   DISPLAY=:75 build/<dir>/bench/clipboard/tessary_bench_clipboard_popup [tessary binary]
#include "seeded_history.h"
#include "x11_bench_input.h"

#include <benchmark/benchmark.h>

#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <vector>

namespace tessary {
namespace {

using Clock = std::chrono::steady_clock;

QString binary = QStringLiteral(TESSARY_BINARY);

// Whether the focused window is the popup (the only 580-wide window).
bool popupFocused(xcb_connection_t *connection)
{
    auto *focus = xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr);
    if (!focus)
        return false;
    auto *geometry = xcb_get_geometry_reply(connection, xcb_get_geometry(connection, focus->focus), nullptr);
    const bool popup = geometry && geometry->width == 580;
    std::free(geometry);
    std::free(focus);
    return popup;
}

bool waitForPopup(xcb_connection_t *connection)
{
    const auto start = Clock::now();
    while (!popupFocused(connection)) {
        if (Clock::now() - start > std::chrono::seconds(2))
            return false;
    }
    return true;
}

void BM_HotKeyToFocusedPopup(benchmark::State &state)
{
    QTemporaryDir home;
    seedHistory(home.filePath(QStringLiteral(".local/share/Tessary")), 1000);
    QProcess tessary;
    if (!BenchInput::startTessary(tessary, binary, home.path())) {
        state.SkipWithError("tessary did not start");
        return;
    }
    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    using namespace BenchInput;
    const std::initializer_list<xcb_keycode_t> hotKey
        = {keycodeOf(connection, controlL), keycodeOf(connection, altL), keycodeOf(connection, letterV)};
    const xcb_keycode_t escapeKey = keycodeOf(connection, escape), downKey = keycodeOf(connection, down);
    std::vector<double> millis;
    for (auto _ : state) {
        const auto start = Clock::now();
        pressChord(connection, hotKey);
        if (!waitForPopup(connection)) {
            state.SkipWithError("the popup did not take the focus");
            break;
        }
        const std::chrono::duration<double> elapsed = Clock::now() - start;
        state.SetIterationTime(elapsed.count());
        millis.push_back(elapsed.count() * 1000);
        pressChord(connection, {escapeKey});
        QTest::qWait(100);
    }
    state.counters["rss_after_cycles_MiB"] = residentMiB(tessary.processId());

    pressChord(connection, hotKey);
    if (waitForPopup(connection)) {
        for (int row = 1; row < 1000; ++row) {
            pressChord(connection, {downKey});
            if (row % 20 == 0)
                QTest::qWait(30);
        }
        QTest::qWait(1500);
        state.counters["rss_scrolled_MiB"] = residentMiB(tessary.processId());
        pressChord(connection, {escapeKey});
    }
    xcb_disconnect(connection);
    tessary.terminate();
    tessary.waitForFinished();
    if (millis.empty())
        return;
    std::sort(millis.begin(), millis.end());
    state.counters["median_ms"] = millis[millis.size() / 2];
    state.counters["p90_ms"] = millis[millis.size() * 9 / 10];
}
BENCHMARK(BM_HotKeyToFocusedPopup)->Iterations(30)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace tessary

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (argc > 1)
        tessary::binary = QString::fromLocal8Bit(argv[1]);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

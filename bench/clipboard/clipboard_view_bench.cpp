// One keystroke in the clipboard popup over a 1,000-entry history with 100
// pictures: the key event into the search field, the store's search, the list
// reset and a synchronous repaint of the visible rows. Runs on the offscreen
// platform unless QT_QPA_PLATFORM says otherwise.
#include "core/clipboard/clip_popup_model.h"
#include "core/clipboard/clipboard_store.h"
#include "platform/fake/clipboard/fake_pasteboard.h"
#include "seeded_history.h"
#include "ui/clipboard/clipboard_popup_view.h"

#include <QApplication>
#include <QLineEdit>
#include <QListView>
#include <QTemporaryDir>
#include <QTest>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <vector>

namespace tessary {
namespace {

void BM_KeystrokeToRepaintedRows(benchmark::State &state)
{
    QTemporaryDir dataDir;
    seedHistory(dataDir.path(), 1000);
    FakePasteboard pasteboard;
    ClipboardStore store(dataDir.path(), pasteboard);
    ClipPopupModel model(store);
    ClipboardPopupView view(model, store);
    view.setFixedWidth(ClipboardPopupView::width);
    view.show();
    (void)QTest::qWaitForWindowExposed(&view);

    const QString typed = QStringLiteral("release 1");
    std::vector<double> millis;
    qsizetype next = 0;
    for (auto _ : state) {
        if (next == typed.size()) {
            view.searchField()->clear();
            next = 0;
        }
        const auto start = std::chrono::steady_clock::now();
        QTest::keyClick(view.searchField(), typed.at(next++).toLatin1());
        view.list()->viewport()->repaint();
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(elapsed.count());
        millis.push_back(elapsed.count() * 1000);
    }
    std::sort(millis.begin(), millis.end());
    state.counters["median_ms"] = millis[millis.size() / 2];
    state.counters["p90_ms"] = millis[millis.size() * 9 / 10];
    state.counters["entries"] = double(store.items().size());
}
BENCHMARK(BM_KeystrokeToRepaintedRows)->Iterations(180)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace tessary

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

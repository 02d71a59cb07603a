// One keystroke in the clipboard popup over a 1,000-entry history with 100
// pictures: the key event into the search field, the store's search, the list
// reset and a synchronous repaint of the visible rows. Runs on the offscreen
// platform unless QT_QPA_PLATFORM says otherwise.
#include "core/clipboard/clip_popup_model.h"
#include "core/clipboard/clipboard_store.h"
#include "platform/fake/clipboard/fake_pasteboard.h"
#include "seeded_history.h"
#include "typing_benchmark.h"
#include "ui/clipboard/clipboard_popup_view.h"

#include <QListView>
#include <QTemporaryDir>
#include <QTest>

#include <benchmark/benchmark.h>

namespace tessary {
namespace {

void BM_KeystrokeToRepaintedRows(benchmark::State &state)
{
    QTemporaryDir dataDir;
    seedHistory(dataDir.path(), 1000);
    FakePasteboard pasteboard;
    ClipboardStore store(dataDir.path(), pasteboard);
    if (store.items().size() != 1000) {
        state.SkipWithError("the seeded history did not load");
        return;
    }
    ClipPopupModel model(store);
    ClipboardPopupView view(model, store);
    view.setFixedWidth(ClipboardPopupView::width);
    view.show();
    (void)QTest::qWaitForWindowExposed(&view);

    measureTyping(state, view.searchField(), view.list(), QStringLiteral("release 1"));
    state.counters["entries"] = double(store.items().size());
}
BENCHMARK(BM_KeystrokeToRepaintedRows)->Iterations(180)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace tessary

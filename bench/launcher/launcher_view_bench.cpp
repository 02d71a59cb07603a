// One keystroke in the launcher panel with 2,000 applications installed: the
// key event into the search field, the model's quick rows, the list reset and
// a synchronous repaint of the visible rows. Runs on the offscreen platform
// unless QT_QPA_PLATFORM says otherwise.
#include "core/clipboard/clipboard_store.h"
#include "core/launcher/app_index.h"
#include "core/launcher/file_searcher.h"
#include "core/launcher/launcher_engine.h"
#include "core/launcher/launcher_model.h"
#include "core/launcher/usage_tracker.h"
#include "core/platform/application_catalog.h"
#include "core/settings/app_settings.h"
#include "core/settings/snippet_store.h"
#include "platform/fake/clipboard/fake_pasteboard.h"
#include "platform/fake/launcher/fake_file_search_backend.h"
#include "platform/fake/launcher/recording_process_launcher.h"
#include "platform/fake/memory_key_value_store.h"
#include "typing_benchmark.h"
#include "ui/launcher_view.h"

#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QListView>
#include <QTemporaryDir>
#include <QTest>

#include <benchmark/benchmark.h>

#include <memory>

namespace tessary {
namespace {

constexpr int applications = 2000;

class NumberedCatalog final : public ApplicationCatalog {
public:
    QStringList defaultRoots() const override { return {}; }
    QString entrySuffix() const override { return QStringLiteral(".app"); }
    QString entryKey(const QString &, const QString &path) const override { return path; }
    std::optional<QString> displayName(const QString &path) const override
    {
        static const QStringList words{QStringLiteral("Text"), QStringLiteral("Editor"), QStringLiteral("Terminal"),
            QStringLiteral("Settings"), QStringLiteral("Image"), QStringLiteral("Viewer"), QStringLiteral("Music")};
        const int n = QFileInfo(path).completeBaseName().toInt();
        return words.at(n % words.size()) + QLatin1Char(' ') + words.at(n / 7 % words.size()) + QLatin1Char(' ')
            + QString::number(n);
    }
};

void BM_KeystrokeToRepaintedRows(benchmark::State &state)
{
    QTemporaryDir appsDir, dataDir;
    for (int i = 0; i < applications; ++i)
        QFile(appsDir.filePath(QStringLiteral("%1.app").arg(i))).open(QIODevice::WriteOnly);
    AppIndex index(std::make_shared<NumberedCatalog>(), {appsDir.path()});
    QEventLoop loop;
    QObject::connect(&index, &AppIndex::scanned, &loop, &QEventLoop::quit);
    index.refresh(true);
    loop.exec();
    MemoryKeyValueStore defaults;
    AppSettings settings(defaults);
    FakePasteboard pasteboard;
    ClipboardStore clipboard(dataDir.path(), pasteboard);
    SnippetStore snippets(dataDir.path());
    UsageTracker usage(defaults);
    FakeFileSearchBackend backend;
    FileSearcher files(backend, QDir::homePath());
    RecordingProcessLauncher processes;
    LauncherEngine engine({settings, clipboard, snippets, index, usage, files, processes, pasteboard});

    LauncherModel model(engine);
    LauncherView view(model);
    view.setFixedWidth(680);
    view.resize(680, 800);
    view.show();
    if (!QTest::qWaitForWindowExposed(&view)) {
        state.SkipWithError("the view was never exposed");
        return;
    }

    measureTyping(state, view.field(), view.list(), QStringLiteral("text editor"));
    state.counters["apps"] = double(index.apps().size());
}
BENCHMARK(BM_KeystrokeToRepaintedRows)->Iterations(220)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace tessary

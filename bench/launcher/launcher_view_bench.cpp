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
#include "ui/launcher_view.h"

#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QListView>
#include <QTemporaryDir>
#include <QTest>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <vector>

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

    const QString typed = QStringLiteral("text editor");
    std::vector<double> millis;
    qsizetype next = 0;
    for (auto _ : state) {
        if (next == typed.size()) {
            view.field()->clear();
            next = 0;
        }
        const auto start = std::chrono::steady_clock::now();
        QTest::keyClick(view.field(), typed.at(next++).toLatin1());
        view.list()->viewport()->repaint();
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(elapsed.count());
        millis.push_back(elapsed.count() * 1000);
    }
    std::sort(millis.begin(), millis.end());
    state.counters["median_ms"] = millis[millis.size() / 2];
    state.counters["p90_ms"] = millis[millis.size() * 9 / 10];
    state.counters["apps"] = double(index.apps().size());
}
BENCHMARK(BM_KeystrokeToRepaintedRows)->Iterations(220)->UseManualTime()->Unit(benchmark::kMillisecond);

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

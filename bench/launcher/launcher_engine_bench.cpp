// quickResults per keystroke over a generated desktop: N applications, 1,000
// clipboard entries and 100 snippets, typing a mix of queries letter by letter.
#include "core/clipboard/clipboard_store.h"
#include "core/launcher/app_index.h"
#include "core/launcher/file_searcher.h"
#include "core/launcher/launcher_engine.h"
#include "core/launcher/usage_tracker.h"
#include "core/settings/app_settings.h"
#include "core/settings/snippet_store.h"
#include "platform/fake/clipboard/fake_pasteboard.h"
#include "platform/fake/launcher/fake_file_search_backend.h"
#include "platform/fake/launcher/recording_process_launcher.h"
#include "platform/fake/memory_key_value_store.h"

#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <map>
#include <memory>

namespace tessary {
namespace {

// Applications named from a word list; the entry "<n>.app" is the n-th name.
class GeneratedCatalog final : public ApplicationCatalog {
public:
    explicit GeneratedCatalog(int count)
    {
        const QStringList words{QStringLiteral("Google"), QStringLiteral("Chrome"), QStringLiteral("Libre"),
            QStringLiteral("Office"), QStringLiteral("Writer"), QStringLiteral("Terminal"), QStringLiteral("Visual"),
            QStringLiteral("Studio"), QStringLiteral("Code"), QStringLiteral("Files"), QStringLiteral("Settings"),
            QStringLiteral("Disk"), QStringLiteral("Usage"), QStringLiteral("Image"), QStringLiteral("Viewer"),
            QStringLiteral("Text"), QStringLiteral("Editor"), QStringLiteral("System"), QStringLiteral("Monitor"),
            QStringLiteral("Music"), QStringLiteral("Player"), QStringLiteral("Mail"), QStringLiteral("Calendar"),
            QStringLiteral("Photos"), QStringLiteral("Café"), QStringLiteral("Safari"), QStringLiteral("Notes"),
            QStringLiteral("3D"), QStringLiteral("Pro"), QStringLiteral("2")};
        QRandomGenerator random(7);
        for (int i = 0; i < count; ++i) {
            QStringList parts;
            for (int w = 0, n = 1 + int(random.bounded(3)); w < n; ++w)
                parts.append(words.at(random.bounded(int(words.size()))));
            m_names.append(parts.join(QLatin1Char(' ')));
        }
    }

    QStringList defaultRoots() const override { return {}; }
    QString entrySuffix() const override { return QStringLiteral(".app"); }
    QString entryKey(const QString &, const QString &path) const override { return path; }
    std::optional<QString> displayName(const QString &path) const override
    {
        return m_names.value(QFileInfo(path).completeBaseName().toInt());
    }
    qsizetype size() const { return m_names.size(); }

private:
    QStringList m_names;
};

struct Desktop {
    explicit Desktop(int apps)
    {
        auto catalog = std::make_shared<GeneratedCatalog>(apps);
        for (int i = 0; i < apps; ++i)
            QFile(appsDir.filePath(QStringLiteral("%1.app").arg(i))).open(QIODevice::WriteOnly);
        index = std::make_unique<AppIndex>(catalog, QStringList{appsDir.path()});
        QEventLoop loop;
        QObject::connect(index.get(), &AppIndex::scanned, &loop, &QEventLoop::quit);
        index->refresh(true);
        loop.exec();

        QList<ClipItem> items;
        for (int i = 0; i < 1000; ++i) {
            const QString text = QStringLiteral("clipboard entry %1 hello world with some more text to search").arg(i);
            items.append(ClipItem{QUuid::createUuid(), ClipItem::Kind::text, text, std::nullopt, std::nullopt,
                QDateTime::currentDateTimeUtc(), i % 50 == 0, QStringLiteral("org.example.Editor"),
                ClipboardStore::hash(QStringLiteral("text"), text), 0, 0});
        }
        QFile history(dataDir.filePath(QStringLiteral("clipboard.json")));
        history.open(QIODevice::WriteOnly);
        history.write(ClipItem::listToJson(items));
        history.close();
        clipboard = std::make_unique<ClipboardStore>(dataDir.path(), pasteboard);

        snippets = std::make_unique<SnippetStore>(dataDir.path());
        QList<Snippet> list;
        for (int i = 0; i < 100; ++i) {
            list.append(Snippet{QUuid::createUuid(), QStringLiteral("Snippet number %1").arg(i),
                QStringLiteral("kw%1").arg(i), QStringLiteral("Text of snippet %1 on {date}").arg(i)});
        }
        snippets->setSnippets(list);

        engine = std::make_unique<LauncherEngine>(
            LauncherEngine::Sources{settings, *clipboard, *snippets, *index, usage, files, processes, pasteboard});
    }

    QTemporaryDir appsDir;
    QTemporaryDir dataDir;
    MemoryKeyValueStore defaults;
    AppSettings settings{defaults};
    FakePasteboard pasteboard;
    std::unique_ptr<ClipboardStore> clipboard;
    std::unique_ptr<SnippetStore> snippets;
    std::unique_ptr<AppIndex> index;
    UsageTracker usage{defaults};
    FakeFileSearchBackend backend;
    FileSearcher files{backend, QDir::homePath()};
    RecordingProcessLauncher processes;
    std::unique_ptr<LauncherEngine> engine;
};

Desktop &desktop(int apps)
{
    static std::map<int, std::unique_ptr<Desktop>> desktops;
    auto &slot = desktops[apps];
    if (!slot)
        slot = std::make_unique<Desktop>(apps);
    return *slot;
}

// Every prefix of each query, as typed.
QStringList keystrokes()
{
    QStringList typed;
    for (const char *query :
        {"saf", "text editor", "settings", "sfr", "cb hello", "12*7%", "g cats", "kw42", "zzzqqq", "sleep"}) {
        const QString text = QString::fromUtf8(query);
        for (int i = 1; i <= text.size(); ++i)
            typed.append(text.left(i));
    }
    return typed;
}

void quickResultsPerKeystroke(benchmark::State &state)
{
    Desktop &d = desktop(int(state.range(0)));
    const QStringList typed = keystrokes();
    qsizetype next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(d.engine->quickResults(typed.at(next)));
        next = (next + 1) % typed.size();
    }
    state.counters["apps"] = double(d.index->apps().size());
}
BENCHMARK(quickResultsPerKeystroke)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);

// The worst keystroke: one letter matches nearly every application.
void quickResultsSingleLetter(benchmark::State &state)
{
    Desktop &d = desktop(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(d.engine->quickResults(QStringLiteral("e")));
}
BENCHMARK(quickResultsSingleLetter)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);

// The clipboard search over 1,000 entries.
void quickResultsClipboard(benchmark::State &state)
{
    Desktop &d = desktop(2000);
    for (auto _ : state)
        benchmark::DoNotOptimize(d.engine->quickResults(QStringLiteral("cb hello world")));
}
BENCHMARK(quickResultsClipboard)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace tessary

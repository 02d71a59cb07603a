#include "app/query_command.h"

#include "app/termination_signals.h"

#include "core/app/data_directory.h"
#include "core/clipboard/clipboard_store.h"
#include "core/launcher/app_index.h"
#include "core/launcher/file_searcher.h"
#include "core/launcher/launcher_engine.h"
#include "core/launcher/usage_tracker.h"
#include "core/platform/pasteboard.h"
#include "core/platform/settings_key_value_store.h"
#include "core/settings/app_settings.h"
#include "core/settings/snippet_store.h"
#include "platform/x11/launcher/desktop_entry_catalog.h"
#include "platform/x11/launcher/desktop_file_search_chain.h"
#include "platform/x11/launcher/detached_process_launcher.h"
#include "platform/x11/launcher/session/desktop_session_control.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>

#include <cstdio>
#include <optional>
#include <utility>

namespace tessary {

namespace {

// Longest wait for the file rows; a slower search is left out of the answer.
constexpr int fileSearchTimeoutMs = 15000;
constexpr int sessionProbeTimeoutMs = 2000;

// The pasteboard of a process that runs no rows and has no display: empty, and
// nothing is ever written to it.
class OfflinePasteboard final : public Pasteboard {
public:
    qint64 changeCount() const override { return 0; }
    void setChangedHandler(std::function<void()>) override { }
    void readContent(const QSet<QString> &, std::function<void(std::optional<PasteboardContent>)> done) override
    {
        done(std::nullopt);
    }
    void readString(std::function<void(std::optional<QString>)> done) override { done(std::nullopt); }
    void clear() override { }
    void writeString(const QString &) override { }
    void writeImage(const QByteArray &) override { }
    void writeFileUrls(const QList<QUrl> &) override { }
};

void print(const QList<LauncherResult> &rows, bool json)
{
    QByteArray out;
    if (json) {
        QJsonArray array;
        for (const LauncherResult &row : rows) {
            array.append(QJsonObject{{QLatin1String("id"), row.id}, {QLatin1String("kind"), rawValue(row.kind)},
                {QLatin1String("title"), row.title}, {QLatin1String("subtitle"), row.subtitle},
                {QLatin1String("score"), row.score}});
        }
        out = QJsonDocument(array).toJson(QJsonDocument::Indented);
    } else {
        for (const LauncherResult &row : rows) {
            out += row.title.toUtf8();
            if (!row.subtitle.isEmpty())
                out += " — " + row.subtitle.toUtf8();
            out += '\n';
        }
    }
    std::fwrite(out.constData(), 1, size_t(out.size()), stdout);
}

} // namespace

int runQueryCommand(int argc, char **argv, const QueryOptions &options)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Tessary"));
    QCoreApplication::setApplicationName(QStringLiteral("Tessary"));
    // Ctrl+C or a kill ends the command between two steps, never in the middle
    // of a file write, so no temporary file is left behind.
    QEventLoop loop;
    std::optional<int> interrupted;
    TerminationSignals termination;
    QObject::connect(&termination, &TerminationSignals::received, &loop, [&interrupted, &loop](int signal) {
        interrupted = signal;
        loop.quit();
    });
    // Reads only: the settings belong to the running instance.
    SettingsKeyValueStore defaults(SettingsKeyValueStore::Access::readOnly);
    AppSettings settings(defaults);
    const QString data = DataDirectory::defaultPath();
    OfflinePasteboard pasteboard;
    ClipboardStore clipboard(data, pasteboard);
    SnippetStore snippets(data);
    const auto catalog = std::make_shared<DesktopEntryCatalog>();
    AppIndex index(catalog, catalog->defaultRoots());
    UsageTracker usage(defaults);
    DesktopFileSearchChain fileSearch(QDir::homePath());
    FileSearcher files(fileSearch.search(), QDir::homePath());
    DetachedProcessLauncher processes;
    DesktopSessionControl session(DesktopSessionControl::Environment::current(), processes);
    LauncherEngine engine({settings, clipboard, snippets, index, usage, files, processes, pasteboard,
        SystemCommand::sessionTable(session, {})});

    // Rows need both the applications and what the session offers.
    int pending = 2;
    const auto oneDone = [&pending, &loop] {
        if (--pending == 0)
            loop.quit();
    };
    QObject::connect(&index, &AppIndex::scanned, &loop, oneDone);
    // A bus that does not answer delays the rows by two seconds at most.
    bool probed = false;
    const auto sessionDone = [&probed, &oneDone] {
        if (!std::exchange(probed, true))
            oneDone();
    };
    QObject::connect(&session, &DesktopSessionControl::probed, &loop, sessionDone);
    QTimer::singleShot(sessionProbeTimeoutMs, &loop, sessionDone);
    index.refresh(true);
    loop.exec();
    if (interrupted)
        return 128 + *interrupted;

    QList<LauncherResult> rows = engine.quickResults(options.text);
    if (options.files) {
        std::optional<QList<LauncherResult>> fileRows;
        engine.fileResults(options.text, [&fileRows, &loop](const QList<LauncherResult> &found) {
            fileRows = found;
            loop.quit();
        });
        if (!fileRows) {
            QTimer::singleShot(fileSearchTimeoutMs, &loop, &QEventLoop::quit);
            loop.exec();
            if (interrupted)
                return 128 + *interrupted;
        }
        rows = LauncherEngine::mergeFileRows(rows, fileRows.value_or(QList<LauncherResult>()));
    }
    print(rows, options.json);
    return 0;
}

} // namespace tessary

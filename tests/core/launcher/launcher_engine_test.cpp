#include "core/launcher/launcher_engine.h"

#include "core/clipboard/clipboard_store.h"
#include "core/launcher/app_index.h"
#include "core/launcher/file_searcher.h"
#include "core/launcher/usage_tracker.h"
#include "core/platform/desktop_opener.h"
#include "core/settings/app_settings.h"
#include "core/settings/snippet_store.h"
#include "platform/fake/clipboard/fake_pasteboard.h"
#include "platform/fake/launcher/fake_application_catalog.h"
#include "platform/fake/launcher/fake_file_search_backend.h"
#include "platform/fake/launcher/recording_process_launcher.h"
#include "platform/fake/memory_key_value_store.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QThreadPool>

#include <gtest/gtest.h>

#include <memory>

namespace tessary {
namespace {

using Kind = LauncherResult::Kind;
const QString home = QStringLiteral("/home/ada");

QStringList ids(const QList<LauncherResult> &rows)
{
    QStringList result;
    for (const LauncherResult &row : rows)
        result.append(row.id);
    return result;
}

const LauncherResult *find(const QList<LauncherResult> &rows, const QString &id)
{
    const auto it = std::find_if(rows.begin(), rows.end(), [&id](const LauncherResult &row) { return row.id == id; });
    return it == rows.end() ? nullptr : &*it;
}

class LauncherEngineTest : public ::testing::Test {
protected:
    LauncherEngineTest()
    {
        m_clipboard.frontAppProvider = [] { return std::optional<QString>(QStringLiteral("org.example.Editor")); };
        m_snippets.setSnippets({});
        m_engine = makeEngine();
    }

    std::unique_ptr<LauncherEngine> makeEngine()
    {
        // Every Linux program "installed", so the table is the same on every machine.
        auto engine = std::make_unique<LauncherEngine>(LauncherEngine::Sources{m_settings, m_clipboard, m_snippets,
            m_index, m_usage, m_files, m_processes, m_pasteboard,
            SystemCommand::linuxTable(
                [](const QString &name) -> QString { return QStringLiteral("/usr/bin/") + name; })});
        engine->actions = recordingActions(QString());
        return engine;
    }

    // Actions that log each call, prefixed with `tag`.
    LauncherActions recordingActions(const QString &tag)
    {
        LauncherActions actions;
        actions.open = [this, tag](const QUrl &url) {
            m_log.append(tag + QStringLiteral("open ") + QString::fromUtf8(url.toEncoded()));
        };
        actions.reveal = [this, tag](const QUrl &url) {
            m_log.append(tag + QStringLiteral("reveal ") + QString::fromUtf8(url.toEncoded()));
        };
        actions.paste = [this, tag](const QString &text) { m_log.append(tag + QStringLiteral("paste ") + text); };
        actions.pasteClip
            = [this, tag](const ClipItem &item) { m_log.append(tag + QStringLiteral("pasteClip ") + *item.text); };
        actions.copy = [this, tag](const QString &text) { m_log.append(tag + QStringLiteral("copy ") + text); };
        actions.confirm = [this, tag](const QString &question) {
            m_log.append(tag + QStringLiteral("confirm ") + question);
            return m_confirms;
        };
        return actions;
    }

    // Installs applications named `names` (file names alike unless "name|file").
    QStringList install(const QStringList &names)
    {
        QStringList paths;
        for (const QString &name : names) {
            const QString display = name.section(QLatin1Char('|'), 0, 0);
            const QString file = name.contains(QLatin1Char('|')) ? name.section(QLatin1Char('|'), 1) : display;
            paths.append(FakeApplicationCatalog::addApp(m_apps.path(), file, display));
        }
        m_index.refresh(true);
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
        return paths;
    }

    void copy(const QString &text)
    {
        m_pasteboard.copyText(text);
        m_clipboard.poll();
    }

    void setSettings(const std::function<void(SettingsData &)> &change)
    {
        SettingsData data = m_settings.data();
        change(data);
        m_settings.setData(data);
    }

    QTemporaryDir m_data;
    QTemporaryDir m_apps;
    MemoryKeyValueStore m_defaults;
    AppSettings m_settings{m_defaults};
    FakePasteboard m_pasteboard;
    ClipboardStore m_clipboard{m_data.path(), m_pasteboard};
    SnippetStore m_snippets{m_data.path()};
    AppIndex m_index{std::make_shared<FakeApplicationCatalog>(), {m_apps.path()}};
    UsageTracker m_usage{m_defaults};
    FakeFileSearchBackend m_backend;
    FileSearcher m_files{m_backend, home};
    RecordingProcessLauncher m_processes;
    std::unique_ptr<LauncherEngine> m_engine;
    QStringList m_log;
    bool m_confirms = false;
};

TEST_F(LauncherEngineTest, calculationRowComesFirstAndCopiesOrPastesWithoutGrouping)
{
    install({QStringLiteral("Calculator")});
    struct Case {
        const char *query;
        const char *title;
        const char *plain;
    } const cases[] = {{"12*7%", "0.84", "0.84"}, {"1000*1000", "1,000,000", "1000000"}, {" 2^10 ", "1,024", "1024"}};
    for (const Case &c : cases) {
        m_log.clear();
        const QList<LauncherResult> rows = m_engine->quickResults(QString::fromUtf8(c.query));
        ASSERT_FALSE(rows.isEmpty());
        const LauncherResult &calc = rows.first();
        EXPECT_EQ(calc.id, QStringLiteral("calc"));
        EXPECT_EQ(calc.kind, Kind::calc);
        EXPECT_EQ(calc.title, QString::fromUtf8(c.title));
        EXPECT_EQ(calc.subtitle, QString::fromUtf8(c.query).trimmed() + QStringLiteral(" ="));
        EXPECT_EQ(calc.score, 5000);
        EXPECT_EQ(calc.symbol, QStringLiteral("equal.circle"));
        EXPECT_EQ(calc.hint, QStringLiteral("↩ Copy"));
        EXPECT_EQ(calc.secondaryHint, QStringLiteral("⌘↩ Paste"));
        calc.primary();
        calc.secondary();
        EXPECT_EQ(m_log,
            (QStringList{QStringLiteral("copy ") + QString::fromUtf8(c.plain),
                QStringLiteral("paste ") + QString::fromUtf8(c.plain)}));
    }
}

TEST_F(LauncherEngineTest, bandsRankEveryKindOfRow)
{
    install({QStringLiteral("Dates"), QStringLiteral("Notes")});
    copy(QStringLiteral("date night plans"));
    m_snippets.setSnippets({Snippet{
        QUuid::createUuid(), QStringLiteral("Today's date"), QStringLiteral("date"), QStringLiteral("{date}")}});
    const QString snippetId
        = QStringLiteral("snip-") + m_snippets.snippets().first().id.toString(QUuid::WithoutBraces).toUpper();
    const QString clipId
        = QStringLiteral("clip-") + m_clipboard.items().first().id.toString(QUuid::WithoutBraces).toUpper();
    const QString dates = QStringLiteral("app-") + m_apps.filePath(QStringLiteral("Dates.app"));

    struct Case {
        const char *query;
        QStringList ids;
        QList<double> scores;
    } const cases[] = {
        {"DATE", {snippetId, dates, QStringLiteral("web-fallback")}, {2500, 899.5, -1}},
        {"g date", {QStringLiteral("web-g"), QStringLiteral("web-fallback")}, {4000, -1}},
        {"cb date", {clipId, QStringLiteral("web-fallback")}, {3000, -1}},
        {"zzzqqq", {QStringLiteral("web-fallback")}, {-1}},
    };
    for (const Case &c : cases) {
        const QList<LauncherResult> rows = m_engine->quickResults(QString::fromUtf8(c.query));
        EXPECT_EQ(ids(rows), c.ids) << c.query;
        QList<double> scores;
        for (const LauncherResult &row : rows)
            scores.append(row.score);
        EXPECT_EQ(scores, c.scores) << c.query;
    }
}

TEST_F(LauncherEngineTest, clipboardRowsListMatchesInSearchOrder)
{
    for (int i = 0; i < 10; ++i)
        copy(QStringLiteral("hello %1").arg(i));
    copy(QStringLiteral("goodbye"));

    for (const char *query : {"cb hello", "clip   hello", "CB HELLO"}) {
        const QList<LauncherResult> rows = m_engine->quickResults(QString::fromUtf8(query));
        ASSERT_EQ(rows.size(), 9) << query << ": eight items and the fallback";
        for (int i = 0; i < 8; ++i) {
            EXPECT_EQ(rows.at(i).kind, Kind::clipboard);
            EXPECT_EQ(rows.at(i).score, 3000 - i);
            EXPECT_EQ(rows.at(i).title, QStringLiteral("hello %1").arg(9 - i));
            EXPECT_EQ(rows.at(i).subtitle, QStringLiteral("Clipboard · org.example.Editor"));
            EXPECT_EQ(rows.at(i).symbol, QStringLiteral("text.alignleft"));
        }
    }
    EXPECT_EQ(m_engine->quickResults(QStringLiteral("cb")).size(), 9) << "a bare prefix lists everything";
    EXPECT_EQ(m_engine->quickResults(QStringLiteral("cbhello")).first().id, QStringLiteral("web-fallback"));

    m_engine->quickResults(QStringLiteral("cb goodbye")).first().primary();
    EXPECT_EQ(m_log, QStringList{QStringLiteral("pasteClip goodbye")});
}

TEST_F(LauncherEngineTest, webKeywordsPercentEncodeTheirTerms)
{
    struct Case {
        const char *query;
        const char *url; // empty: no keyword row
    } const cases[] = {
        {"yt cats & dogs +1", "https://www.youtube.com/results?search_query=cats%20%26%20dogs%20%2B1"},
        {"YT a=b?c/d#e", "https://www.youtube.com/results?search_query=a%3Db%3Fc%2Fd%23e"},
        {"yt !$'()*,-.:;@_~", "https://www.youtube.com/results?search_query=!$'()*,-.:;@_~"},
        {"yt café", "https://www.youtube.com/results?search_query=caf%C3%A9"},
        {"yt", ""},
        {"yt ", ""},
        {"yt    ", ""},
        {"ytcats", ""},
    };
    for (const Case &c : cases) {
        m_log.clear();
        const QList<LauncherResult> rows = m_engine->quickResults(QString::fromUtf8(c.query));
        const LauncherResult *row = find(rows, QStringLiteral("web-yt"));
        if (!*c.url) {
            EXPECT_EQ(row, nullptr) << c.query;
            continue;
        }
        ASSERT_NE(row, nullptr) << c.query;
        EXPECT_EQ(row->subtitle, QStringLiteral("www.youtube.com"));
        row->primary();
        EXPECT_EQ(m_log, QStringList{QStringLiteral("open ") + QString::fromUtf8(c.url)}) << c.query;
    }
    const LauncherResult row = m_engine->quickResults(QStringLiteral("yt cats & dogs")).first();
    EXPECT_EQ(row.title, QStringLiteral("Search YouTube for “cats & dogs”"));
    EXPECT_EQ(row.hint, QStringLiteral("↩ Search"));
}

TEST_F(LauncherEngineTest, applicationsRankByFuzzyTierAndOpenThroughTheActions)
{
    const QStringList paths = install({QStringLiteral("Safari"), QStringLiteral("App Store"),
        QStringLiteral("System Settings"), QStringLiteral("Notes"), QStringLiteral("Text Edit|TextEdit")});
    struct Case {
        const char *query;
        const char *first;
    } const cases[] = {
        {"saf", "Safari"},
        {"as", "App Store"},
        {"settings", "System Settings"},
        {"sfr", "Safari"},
        {"textedit", "Text Edit"},
        {"  notes  ", "Notes"},
    };
    for (const Case &c : cases) {
        const QList<LauncherResult> rows = m_engine->quickResults(QString::fromUtf8(c.query));
        ASSERT_GE(rows.size(), 2) << c.query;
        EXPECT_EQ(rows.first().title, QString::fromUtf8(c.first)) << c.query;
        EXPECT_EQ(rows.first().kind, Kind::app);
    }
    const LauncherResult safari = m_engine->quickResults(QStringLiteral("safari")).first();
    EXPECT_EQ(safari.id, QStringLiteral("app-") + paths.at(0));
    EXPECT_EQ(safari.subtitle, m_apps.path());
    EXPECT_EQ(safari.iconPath, paths.at(0));
    EXPECT_EQ(safari.symbol, std::nullopt);
    EXPECT_EQ(safari.score, 1000);
    EXPECT_EQ(safari.secondaryHint, QStringLiteral("⌘↩ Reveal"));
    safari.secondary();
    EXPECT_EQ(m_usage.count(safari.id), 0) << "revealing is not a use";
    safari.primary();
    EXPECT_EQ(m_usage.count(safari.id), 1);
    const QString url = QString::fromUtf8(QUrl::fromLocalFile(paths.at(0)).toEncoded());
    EXPECT_EQ(m_log, (QStringList{QStringLiteral("reveal ") + url, QStringLiteral("open ") + url}));
}

TEST_F(LauncherEngineTest, rowsFollowARescanThatReplacedEveryApplication)
{
    const QStringList before = install({QStringLiteral("Alpha Tool|alpha")});
    EXPECT_EQ(m_engine->quickResults(QStringLiteral("tool")).first().id, QStringLiteral("app-") + before.first());
    QDir(before.first()).removeRecursively();
    const QStringList after = install({QStringLiteral("Beta Tool|beta")});
    const LauncherResult row = m_engine->quickResults(QStringLiteral("tool")).first();
    EXPECT_EQ(row.title, QStringLiteral("Beta Tool"));
    EXPECT_EQ(row.id, QStringLiteral("app-") + after.first());
    m_usage.record(row.id);
    EXPECT_EQ(m_engine->frequentApps().first().id, row.id);
}

TEST_F(LauncherEngineTest, usageLiftsAnApplicationUpToTwentyUses)
{
    const QStringList paths
        = install({QStringLiteral("Notes One"), QStringLiteral("Notes Two"), QStringLiteral("Notes")});
    const auto order = [this] {
        QStringList titles;
        for (const LauncherResult &row : m_engine->quickResults(QStringLiteral("notes")))
            titles.append(row.title);
        return titles;
    };
    EXPECT_EQ(order(),
        (QStringList{QStringLiteral("Notes"), QStringLiteral("Notes One"), QStringLiteral("Notes Two"),
            QStringLiteral("Search Google for “notes”")}));
    const QString two = QStringLiteral("app-") + paths.at(1);
    m_usage.record(two);
    EXPECT_EQ(order().mid(0, 3),
        (QStringList{QStringLiteral("Notes"), QStringLiteral("Notes Two"), QStringLiteral("Notes One")}));
    for (int i = 0; i < 40; ++i)
        m_usage.record(two);
    const QList<LauncherResult> rows = m_engine->quickResults(QStringLiteral("notes"));
    const LauncherResult *row = find(rows, two);
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->score, 900 - 0.5 * 4 + 160) << "the bonus stops at 20 uses";

    const QString exact = QStringLiteral("app-") + paths.at(2);
    for (int i = 0; i < 20; ++i)
        m_usage.record(exact);
    EXPECT_EQ(order().first(), QStringLiteral("Notes")) << "equal bonuses leave the better match first";
}

TEST_F(LauncherEngineTest, equalScoresKeepTheirOrderAndOnlyEightRowsPrecedeTheFallback)
{
    QStringList names;
    for (int i = 0; i < 12; ++i)
        names.append(QStringLiteral("Twin|twin%1").arg(i, 2, 10, QLatin1Char('0')));
    const QStringList paths = install(names);
    const QList<LauncherResult> rows = m_engine->quickResults(QStringLiteral("twin"));
    ASSERT_EQ(rows.size(), 9);
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(rows.at(i).id, QStringLiteral("app-") + paths.at(i));
    EXPECT_EQ(rows.last().id, QStringLiteral("web-fallback"));
    EXPECT_EQ(rows.last().title, QStringLiteral("Search Google for “twin”"));

    setSettings([](SettingsData &data) { data.webSearches.clear(); });
    EXPECT_EQ(m_engine->quickResults(QStringLiteral("twin")).size(), 8) << "no searches, no fallback";
    EXPECT_TRUE(m_engine->quickResults(QStringLiteral("zzzqqq")).isEmpty());
}

TEST_F(LauncherEngineTest, systemCommandsAreGatedByTheSettingAndConfirmedBeforeRunning)
{
    struct Case {
        const char *query;
        const char *id;
    } const cases[] = {{"sleep", "sys-sleep"}, {"dark", "sys-darkmode"}, {"restart", "sys-restart"}};
    for (const Case &c : cases) {
        const QList<LauncherResult> rows = m_engine->quickResults(QString::fromUtf8(c.query));
        const LauncherResult *row = find(rows, QString::fromUtf8(c.id));
        ASSERT_NE(row, nullptr) << c.query;
        EXPECT_EQ(row->kind, Kind::system);
        EXPECT_EQ(row->subtitle, QStringLiteral("System command"));
        EXPECT_EQ(row->hint, QStringLiteral("↩ Run"));
    }
    EXPECT_EQ(find(m_engine->quickResults(QStringLiteral("sleep")), QStringLiteral("sys-sleep"))->score, 1000 - 20);

    const LauncherResult restart
        = *find(m_engine->quickResults(QStringLiteral("restart")), QStringLiteral("sys-restart"));
    restart.primary();
    EXPECT_EQ(m_log, QStringList{QStringLiteral("confirm Restart your computer?")});
    EXPECT_TRUE(m_processes.calls().isEmpty()) << "declined: nothing runs";
    EXPECT_EQ(m_usage.count(QStringLiteral("sys-restart")), 0) << "declined: nothing is recorded";
    EXPECT_FALSE(m_defaults.contains(QLatin1String(UsageTracker::storageKey)));

    m_confirms = true;
    restart.primary();
    ASSERT_EQ(m_processes.calls().size(), 1);
    EXPECT_EQ(m_processes.calls().first().program, QStringLiteral("/usr/bin/systemctl"));
    EXPECT_EQ(m_processes.calls().first().arguments, QStringList{QStringLiteral("reboot")});
    EXPECT_EQ(m_usage.count(QStringLiteral("sys-restart")), 1);

    m_log.clear();
    find(m_engine->quickResults(QStringLiteral("sleep")), QStringLiteral("sys-sleep"))->primary();
    EXPECT_TRUE(m_log.isEmpty()) << "no question for commands without one";
    EXPECT_EQ(m_processes.calls().size(), 2);

    setSettings([](SettingsData &data) { data.launcherSystem = false; });
    for (const Case &c : cases) {
        for (const LauncherResult &row : m_engine->quickResults(QString::fromUtf8(c.query)))
            EXPECT_NE(row.kind, Kind::system) << c.query;
    }
}

TEST_F(LauncherEngineTest, snippetsMatchByNameOrKeywordAndPasteTheirExpansion)
{
    m_snippets.setSnippets({
        Snippet{
            QUuid::createUuid(), QStringLiteral("Greeting"), QStringLiteral("hi"), QStringLiteral("Hi {clipboard}!")},
        Snippet{QUuid::createUuid(), QStringLiteral("Address"), QString(),
            QStringLiteral("1 Long Road\nSpringfield\n") + QString(80, QLatin1Char('x'))},
    });
    copy(QStringLiteral("there"));

    const QList<LauncherResult> keyword = m_engine->quickResults(QStringLiteral("HI"));
    ASSERT_EQ(keyword.first().kind, Kind::snippet);
    EXPECT_EQ(keyword.first().score, 2500);
    EXPECT_EQ(keyword.first().symbol, QStringLiteral("text.append"));
    keyword.first().primary();
    EXPECT_EQ(m_log, QStringList{QStringLiteral("paste Hi there!")});

    const LauncherResult address = m_engine->quickResults(QStringLiteral("addr")).first();
    EXPECT_EQ(address.title, QStringLiteral("Address"));
    EXPECT_EQ(address.score, 900 - 0.5 * 3);
    EXPECT_EQ(address.subtitle, QStringLiteral("Snippet · 1 Long Road Springfield ") + QString(36, QLatin1Char('x')));
    EXPECT_EQ(address.secondary, nullptr);
}

TEST_F(LauncherEngineTest, anEmptyQueryListsTheMostUsedInstalledApplications)
{
    QStringList names;
    for (int i = 0; i < 8; ++i)
        names.append(QStringLiteral("App %1").arg(i));
    const QStringList paths = install(names);
    for (int i = 0; i < 8; ++i) {
        for (int n = 0; n <= i; ++n)
            m_usage.record(QStringLiteral("app-") + paths.at(i));
    }
    for (int n = 0; n < 50; ++n) {
        m_usage.record(QStringLiteral("sys-sleep"));
        m_usage.record(QStringLiteral("app-/gone/Old.app"));
    }

    for (const char *query : {"", "   ", "\t"}) {
        const QList<LauncherResult> rows = m_engine->quickResults(QString::fromUtf8(query));
        ASSERT_EQ(rows.size(), 6) << "'" << query << "'";
        for (int i = 0; i < 6; ++i) {
            EXPECT_EQ(rows.at(i).id, QStringLiteral("app-") + paths.at(7 - i));
            EXPECT_EQ(rows.at(i).subtitle, QStringLiteral("Frequently used"));
            EXPECT_EQ(rows.at(i).score, 0);
        }
    }
}

TEST_F(LauncherEngineTest, rowsCaptureActionsOrFollowTheEngineAsDocumented)
{
    install({QStringLiteral("Safari")});
    const LauncherResult calc = m_engine->quickResults(QStringLiteral("1+1")).first();
    const LauncherResult app = m_engine->quickResults(QStringLiteral("safari")).first();
    m_engine->actions = recordingActions(QStringLiteral("new "));
    calc.primary();
    app.primary();
    app.secondary();
    const QString url
        = QString::fromUtf8(QUrl::fromLocalFile(m_apps.filePath(QStringLiteral("Safari.app"))).toEncoded());
    EXPECT_EQ(m_log,
        (QStringList{QStringLiteral("copy 2"), QStringLiteral("new open ") + url, QStringLiteral("reveal ") + url}));

    m_log.clear();
    m_engine.reset();
    app.primary();
    EXPECT_TRUE(m_log.isEmpty()) << "an application row does nothing once its engine is gone";
    EXPECT_EQ(m_usage.count(app.id), 1);
}

TEST_F(LauncherEngineTest, fileRowsComeFromTheLatestSearchOnly)
{
    std::optional<QList<LauncherResult>> first, second;
    m_engine->fileResults(QStringLiteral("rep"), [&](const QList<LauncherResult> &rows) { first = rows; });
    m_engine->fileResults(QStringLiteral(" report "), [&](const QList<LauncherResult> &rows) { second = rows; });
    ASSERT_EQ(m_backend.searches().size(), 2);
    EXPECT_EQ(m_backend.searches().at(1).text, QStringLiteral("report"));
    m_backend.deliver(0, {home + QStringLiteral("/old-rep.txt")});
    m_backend.deliver(1,
        {home + QStringLiteral("/Documents/report.pdf"), home + QStringLiteral("/report.txt"),
            QStringLiteral("/srv/share/report.odt")});
    EXPECT_FALSE(first);
    ASSERT_TRUE(second);
    ASSERT_EQ(second->size(), 3);
    const LauncherResult &pdf = second->at(0);
    EXPECT_EQ(pdf.id, QStringLiteral("file-/home/ada/Documents/report.pdf"));
    EXPECT_EQ(pdf.kind, Kind::file);
    EXPECT_EQ(pdf.title, QStringLiteral("report.pdf"));
    EXPECT_EQ(pdf.subtitle, QStringLiteral("~/Documents"));
    EXPECT_EQ(pdf.iconPath, QStringLiteral("/home/ada/Documents/report.pdf"));
    EXPECT_EQ(pdf.score, -0.5);
    EXPECT_EQ(second->at(1).subtitle, QStringLiteral("~"));
    EXPECT_EQ(second->at(2).subtitle, QStringLiteral("/srv/share"));
    pdf.primary();
    pdf.secondary();
    EXPECT_EQ(m_log,
        (QStringList{QStringLiteral("open file:///home/ada/Documents/report.pdf"),
            QStringLiteral("reveal file:///home/ada/Documents/report.pdf")}));
}

TEST_F(LauncherEngineTest, noFileSearchForShortTextCalculationsOrWhenSwitchedOff)
{
    struct Case {
        const char *query;
        bool filesOn;
    } const cases[] = {{"r", true}, {" r ", true}, {"2+3", true}, {"report", false}};
    for (const Case &c : cases) {
        setSettings([](SettingsData &data) { data.launcherFiles = true; });
        m_engine->fileResults(QStringLiteral("older"), [](const QList<LauncherResult> &) { FAIL() << "cancelled"; });
        setSettings([&c](SettingsData &data) { data.launcherFiles = c.filesOn; });
        int calls = 0;
        m_engine->fileResults(QString::fromUtf8(c.query), [&calls](const QList<LauncherResult> &rows) {
            ++calls;
            EXPECT_TRUE(rows.isEmpty());
        });
        EXPECT_EQ(calls, 1) << c.query;
        EXPECT_TRUE(m_backend.searches().last().stopped) << c.query << ": the running search is cancelled";
        m_backend.deliver(int(m_backend.searches().size()) - 1, {home + QStringLiteral("/older.txt")});
    }
}

TEST(LauncherEngine, fileRowsMergeBeforeTheFallbackAtMostFive)
{
    const auto row = [](const QString &id, Kind kind) {
        LauncherResult result;
        result.id = id;
        result.kind = kind;
        return result;
    };
    QList<LauncherResult> files;
    for (int i = 0; i < 7; ++i)
        files.append(row(QStringLiteral("file-%1").arg(i), Kind::file));
    const QList<LauncherResult> quick{row(QStringLiteral("calc"), Kind::calc), row(QStringLiteral("app-a"), Kind::app),
        row(QStringLiteral("web-fallback"), Kind::web)};

    struct Case {
        const char *label;
        QList<LauncherResult> rows;
        QList<LauncherResult> files;
        QStringList expected;
    } const cases[] = {
        {"before the fallback", quick, files,
            {QStringLiteral("calc"), QStringLiteral("app-a"), QStringLiteral("file-0"), QStringLiteral("file-1"),
                QStringLiteral("file-2"), QStringLiteral("file-3"), QStringLiteral("file-4"),
                QStringLiteral("web-fallback")}},
        {"replacing earlier file rows", LauncherEngine::mergeFileRows(quick, files), files.mid(5),
            {QStringLiteral("calc"), QStringLiteral("app-a"), QStringLiteral("file-5"), QStringLiteral("file-6"),
                QStringLiteral("web-fallback")}},
        {"none found", LauncherEngine::mergeFileRows(quick, files), {},
            {QStringLiteral("calc"), QStringLiteral("app-a"), QStringLiteral("web-fallback")}},
        {"no fallback: last", quick.mid(0, 2), files.mid(0, 1),
            {QStringLiteral("calc"), QStringLiteral("app-a"), QStringLiteral("file-0")}},
    };
    for (const Case &c : cases)
        EXPECT_EQ(ids(LauncherEngine::mergeFileRows(c.rows, c.files)), c.expected) << c.label;
}

class RecordingOpener final : public DesktopOpener {
public:
    bool openUrl(const QUrl &url) override { return log(QStringLiteral("url ") + url.toString()); }
    bool openFile(const QString &path) override { return log(QStringLiteral("file ") + path); }
    bool openApplication(const QString &path) override { return log(QStringLiteral("app ") + path); }
    bool revealInFileManager(const QString &path) override { return log(QStringLiteral("reveal ") + path); }

    bool log(const QString &line)
    {
        calls.append(line);
        return true;
    }
    QStringList calls;
};

TEST(LauncherActions, openLaunchesIndexedApplicationsAndOpensEverythingElse)
{
    QTemporaryDir dir;
    const QString app = FakeApplicationCatalog::addApp(dir.path(), QStringLiteral("Editor"));
    AppIndex index(std::make_shared<FakeApplicationCatalog>(), {dir.path()});
    index.refresh(true);
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();

    RecordingOpener opener;
    LauncherActions actions;
    actions.openThrough(opener, index);
    actions.open(QUrl::fromLocalFile(app));
    actions.open(QUrl::fromLocalFile(dir.filePath(QStringLiteral("notes.txt"))));
    actions.open(QUrl(QStringLiteral("https://example.com/?q=a")));
    actions.reveal(QUrl::fromLocalFile(app));
    EXPECT_EQ(opener.calls,
        (QStringList{QStringLiteral("app ") + app, QStringLiteral("file ") + dir.filePath(QStringLiteral("notes.txt")),
            QStringLiteral("url https://example.com/?q=a"), QStringLiteral("reveal ") + app}));
}

} // namespace
} // namespace tessary

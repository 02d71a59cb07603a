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
#include "platform/fake/launcher/fake_session_control.h"
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
using namespace Qt::StringLiterals;
const QString home = u"/home/ada"_s;

QStringList ids(const QList<LauncherResult> &rows)
{
    QStringList result;
    for (const LauncherResult &row : rows)
        result.append(row.id);
    return result;
}

QStringList titles(const QList<LauncherResult> &rows)
{
    QStringList result;
    for (const LauncherResult &row : rows)
        result.append(row.title);
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
        m_clipboard.frontAppProvider = [] { return std::optional<QString>(u"org.example.Editor"_s); };
        m_snippets.setSnippets({});
        // Every command offered, so the table is the same on every machine.
        for (int action = 0; action <= static_cast<int>(SessionControl::Action::shutdown); ++action)
            m_session.offered.insert(static_cast<SessionControl::Action>(action));
        m_engine = std::make_unique<LauncherEngine>(
            LauncherEngine::Sources{m_settings, m_clipboard, m_snippets, m_index, m_usage, m_files, m_processes,
                m_pasteboard, SystemCommand::sessionTable(m_session, [](const QString &) {})});
        m_engine->actions = recordingActions(QString());
    }

    // Actions that log each call, prefixed with `tag`.
    LauncherActions recordingActions(const QString &tag)
    {
        const auto log = [this, tag](const QString &line) { m_log.append(tag + line); };
        const auto encoded = [](const QUrl &url) { return QString::fromUtf8(url.toEncoded()); };
        LauncherActions actions;
        actions.open = [=](const QUrl &url) { log(u"open "_s + encoded(url)); };
        actions.reveal = [=](const QUrl &url) { log(u"reveal "_s + encoded(url)); };
        actions.paste = [=](const QString &text) { log(u"paste "_s + text); };
        actions.pasteClip = [=](const ClipItem &item) { log(u"pasteClip "_s + *item.text); };
        actions.copy = [=](const QString &text) { log(u"copy "_s + text); };
        actions.confirm = [=, this](const QString &question) {
            log(u"confirm "_s + question);
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
    FakeSessionControl m_session;
    std::unique_ptr<LauncherEngine> m_engine;
    QStringList m_log;
    bool m_confirms = false;
};

TEST_F(LauncherEngineTest, calculationRowCopiesOrPastesWithoutGrouping)
{
    const LauncherResult calc = m_engine->quickResults(u" 1000*1000 "_s).first();
    EXPECT_EQ(calc.kind, Kind::calc);
    EXPECT_EQ(calc.title, u"1,000,000"_s);
    EXPECT_EQ(calc.subtitle, u"1000*1000 ="_s);
    calc.primary();
    calc.secondary();
    EXPECT_EQ(m_log, (QStringList{u"copy 1000000"_s, u"paste 1000000"_s}));
}

TEST_F(LauncherEngineTest, bandsRankEveryKindOfRow)
{
    install({u"Dates"_s, u"Notes"_s});
    copy(u"date night plans"_s);
    m_snippets.setSnippets({Snippet{QUuid::createUuid(), u"Today's date"_s, u"date"_s, u"{date}"_s}});
    const QString snippetId = u"snip-"_s + m_snippets.snippets().first().id.toString(QUuid::WithoutBraces).toUpper();
    const QString clipId = u"clip-"_s + m_clipboard.items().first().id.toString(QUuid::WithoutBraces).toUpper();
    const QString dates = u"app-"_s + m_apps.filePath(u"Dates.app"_s);

    struct Case {
        const char *query;
        QStringList ids;
        QList<double> scores;
    } const cases[] = {
        {"DATE", {snippetId, dates, u"web-fallback"_s}, {2500, 899.5, -1}},
        {"g date", {u"web-g"_s, u"web-fallback"_s}, {4000, -1}},
        {"cb date", {clipId, u"web-fallback"_s}, {3000, -1}},
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
        copy(u"hello %1"_s.arg(i));
    copy(u"goodbye"_s);

    for (const char *query : {"cb hello", "clip   hello", "CB HELLO"}) {
        const QList<LauncherResult> rows = m_engine->quickResults(QString::fromUtf8(query));
        ASSERT_EQ(rows.size(), 9) << query << ": eight items and the fallback";
        for (int i = 0; i < 8; ++i) {
            EXPECT_EQ(rows.at(i).score, 3000 - i);
            EXPECT_EQ(rows.at(i).title, u"hello %1"_s.arg(9 - i));
        }
    }
    EXPECT_EQ(m_engine->quickResults(u"cb"_s).size(), 9) << "a bare prefix lists everything";
    EXPECT_EQ(m_engine->quickResults(u"cbhello"_s).first().id, u"web-fallback"_s);

    const LauncherResult goodbye = m_engine->quickResults(u"cb goodbye"_s).first();
    EXPECT_EQ(goodbye.subtitle, u"Clipboard · org.example.Editor"_s);
    goodbye.primary();
    EXPECT_EQ(m_log, QStringList{u"pasteClip goodbye"_s});
}

TEST_F(LauncherEngineTest, webKeywordsPercentEncodeTheirTerms)
{
    struct Case {
        const char *query;
        const char *url;
    } const cases[] = {
        {"yt cats & dogs +1", "https://www.youtube.com/results?search_query=cats%20%26%20dogs%20%2B1"},
        {"YT a=b?c/d#e", "https://www.youtube.com/results?search_query=a%3Db%3Fc%2Fd%23e"},
        {"yt !$'()*,-.:;@_~", "https://www.youtube.com/results?search_query=!$'()*,-.:;@_~"},
        {"yt café", "https://www.youtube.com/results?search_query=caf%C3%A9"},
    };
    for (const Case &c : cases) {
        m_log.clear();
        const QList<LauncherResult> rows = m_engine->quickResults(QString::fromUtf8(c.query));
        const LauncherResult *row = find(rows, u"web-yt"_s);
        ASSERT_NE(row, nullptr) << c.query;
        row->primary();
        EXPECT_EQ(m_log, QStringList{u"open "_s + QString::fromUtf8(c.url)}) << c.query;
    }
    const LauncherResult row = m_engine->quickResults(u"yt cats & dogs"_s).first();
    EXPECT_EQ(row.title, u"Search YouTube for “cats & dogs”"_s);
    EXPECT_EQ(row.subtitle, u"www.youtube.com"_s);
    for (const char *query : {"yt", "yt    ", "ytcats"})
        EXPECT_EQ(find(m_engine->quickResults(QString::fromUtf8(query)), u"web-yt"_s), nullptr) << query;
}

TEST_F(LauncherEngineTest, applicationsMatchByNameOrFileNameAndOpenThroughTheActions)
{
    const QStringList paths = install({u"Safari"_s, u"Notes"_s, u"Text Edit|TextEdit"_s});
    struct Case {
        const char *query;
        const char *first;
    } const cases[] = {{"sfr", "Safari"}, {"textedit", "Text Edit"}, {"  notes  ", "Notes"}};
    for (const Case &c : cases) {
        const QList<LauncherResult> rows = m_engine->quickResults(QString::fromUtf8(c.query));
        ASSERT_GE(rows.size(), 2) << c.query;
        EXPECT_EQ(rows.first().title, QString::fromUtf8(c.first)) << c.query;
    }
    const LauncherResult safari = m_engine->quickResults(u"safari"_s).first();
    EXPECT_EQ(safari.id, u"app-"_s + paths.at(0));
    EXPECT_EQ(safari.subtitle, m_apps.path());
    EXPECT_EQ(safari.iconPath, paths.at(0));
    safari.secondary();
    EXPECT_EQ(m_usage.count(safari.id), 0) << "revealing is not a use";
    safari.primary();
    EXPECT_EQ(m_usage.count(safari.id), 1);
    const QString url = QString::fromUtf8(QUrl::fromLocalFile(paths.at(0)).toEncoded());
    EXPECT_EQ(m_log, (QStringList{u"reveal "_s + url, u"open "_s + url}));
}

TEST_F(LauncherEngineTest, otherNamesFindApplicationsBelowNameMatches)
{
    FakeApplicationCatalog::addApp(m_apps.path(), u"firefox"_s, u"Firefox"_s, false,
        {u"Mozilla Firefox"_s, u"Web Browser"_s, u"internet"_s, u"www"_s});
    install({u"Browser Tool"_s, u"Webster"_s});
    struct Case {
        const char *query;
        QStringList titles;
    } const cases[] = {
        {"browser", {u"Browser Tool"_s, u"Firefox"_s}},
        {"internet", {u"Firefox"_s}},
        {"web", {u"Webster"_s, u"Firefox"_s}},
        {"fire", {u"Firefox"_s}},
        // Scattered letters in an other name are too weak to show.
        {"mzx", {}},
    };
    for (const Case &c : cases) {
        QList<LauncherResult> rows = m_engine->quickResults(QString::fromUtf8(c.query));
        rows.removeIf([](const LauncherResult &row) { return row.kind != Kind::app; });
        EXPECT_EQ(titles(rows), c.titles) << c.query;
    }
}

TEST_F(LauncherEngineTest, rowsFollowARescanThatReplacedEveryApplication)
{
    const QStringList before = install({u"Alpha Tool|alpha"_s});
    EXPECT_EQ(m_engine->quickResults(u"tool"_s).first().id, u"app-"_s + before.first());
    QDir(before.first()).removeRecursively();
    const QStringList after = install({u"Beta Tool|beta"_s});
    const LauncherResult row = m_engine->quickResults(u"tool"_s).first();
    EXPECT_EQ(row.title, u"Beta Tool"_s);
    EXPECT_EQ(row.id, u"app-"_s + after.first());
    m_usage.record(row.id);
    EXPECT_EQ(m_engine->frequentApps().first().id, row.id);
}

TEST_F(LauncherEngineTest, usageLiftsAnApplicationUpToTwentyUses)
{
    const QStringList paths = install({u"Notes One"_s, u"Notes Two"_s, u"Notes"_s});
    const auto order = [this] { return titles(m_engine->quickResults(u"notes"_s)); };
    EXPECT_EQ(order(), (QStringList{u"Notes"_s, u"Notes One"_s, u"Notes Two"_s, u"Search Google for “notes”"_s}));
    const QString two = u"app-"_s + paths.at(1);
    m_usage.record(two);
    EXPECT_EQ(order().mid(0, 3), (QStringList{u"Notes"_s, u"Notes Two"_s, u"Notes One"_s}));
    for (int i = 0; i < 40; ++i)
        m_usage.record(two);
    const QList<LauncherResult> rows = m_engine->quickResults(u"notes"_s);
    const LauncherResult *row = find(rows, two);
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->score, 900 - 0.5 * 4 + 160) << "the bonus stops at 20 uses";

    const QString exact = u"app-"_s + paths.at(2);
    for (int i = 0; i < 20; ++i)
        m_usage.record(exact);
    EXPECT_EQ(order().first(), u"Notes"_s) << "equal bonuses leave the better match first";
}

TEST_F(LauncherEngineTest, equalScoresKeepTheirOrderAndOnlyEightRowsPrecedeTheFallback)
{
    QStringList names;
    for (int i = 0; i < 12; ++i)
        names.append(u"Twin|twin%1"_s.arg(i, 2, 10, QLatin1Char('0')));
    const QStringList paths = install(names);
    const QList<LauncherResult> rows = m_engine->quickResults(u"twin"_s);
    ASSERT_EQ(rows.size(), 9);
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(rows.at(i).id, u"app-"_s + paths.at(i));
    EXPECT_EQ(rows.last().id, u"web-fallback"_s);

    setSettings([](SettingsData &data) { data.webSearches.clear(); });
    EXPECT_EQ(m_engine->quickResults(u"twin"_s).size(), 8) << "no searches, no fallback";
    EXPECT_TRUE(m_engine->quickResults(u"zzzqqq"_s).isEmpty());
}

TEST_F(LauncherEngineTest, systemCommandsAreGatedByTheSettingAndConfirmedBeforeRunning)
{
    const auto command = [this](const QString &query, const QString &id) -> std::optional<LauncherResult> {
        const QList<LauncherResult> rows = m_engine->quickResults(query);
        const LauncherResult *row = find(rows, id);
        return row ? std::optional(*row) : std::nullopt;
    };
    const std::optional<LauncherResult> sleep = command(u"sleep"_s, u"sys-sleep"_s);
    ASSERT_TRUE(sleep);
    EXPECT_EQ(sleep->score, 1000 - 20);

    const std::optional<LauncherResult> restart = command(u"restart"_s, u"sys-restart"_s);
    ASSERT_TRUE(restart);
    restart->primary();
    EXPECT_EQ(m_log, QStringList{u"confirm Restart your computer?"_s});
    EXPECT_TRUE(m_session.performed.isEmpty()) << "declined: nothing runs";
    EXPECT_EQ(m_usage.count(u"sys-restart"_s), 0) << "declined: nothing is recorded";

    m_confirms = true;
    restart->primary();
    EXPECT_EQ(m_session.performed, QList{SessionControl::Action::restart});
    EXPECT_EQ(m_usage.count(u"sys-restart"_s), 1);

    m_log.clear();
    sleep->primary();
    EXPECT_TRUE(m_log.isEmpty()) << "no question for commands without one";
    EXPECT_EQ(m_session.performed.size(), 2);

    ASSERT_TRUE(command(u"dark"_s, u"sys-darkmode"_s));
    m_session.offered.remove(SessionControl::Action::darkMode);
    EXPECT_FALSE(command(u"dark"_s, u"sys-darkmode"_s)) << "what the session does not offer is not shown";

    setSettings([](SettingsData &data) { data.launcherSystem = false; });
    EXPECT_FALSE(command(u"sleep"_s, u"sys-sleep"_s));
}

TEST_F(LauncherEngineTest, snippetsMatchByNameOrKeywordAndPasteTheirExpansion)
{
    m_snippets.setSnippets({
        Snippet{QUuid::createUuid(), u"Greeting"_s, u"hi"_s, u"Hi {clipboard}!"_s},
        Snippet{QUuid::createUuid(), u"Address"_s, QString(),
            u"1 Long Road\nSpringfield\n"_s + QString(80, QLatin1Char('x'))},
    });
    copy(u"there"_s);

    const QList<LauncherResult> keyword = m_engine->quickResults(u"HI"_s);
    ASSERT_EQ(keyword.first().kind, Kind::snippet);
    EXPECT_EQ(keyword.first().score, 2500);
    keyword.first().primary();
    EXPECT_EQ(m_log, QStringList{u"paste Hi there!"_s});

    const LauncherResult address = m_engine->quickResults(u"addr"_s).first();
    EXPECT_EQ(address.title, u"Address"_s);
    EXPECT_EQ(address.score, 900 - 0.5 * 3);
    EXPECT_EQ(address.subtitle, u"Snippet · 1 Long Road Springfield "_s + QString(36, QLatin1Char('x')));
}

TEST_F(LauncherEngineTest, anEmptyQueryListsTheMostUsedInstalledApplications)
{
    QStringList names;
    for (int i = 0; i < 8; ++i)
        names.append(u"App %1"_s.arg(i));
    const QStringList paths = install(names);
    for (int i = 0; i < 8; ++i) {
        for (int n = 0; n <= i; ++n)
            m_usage.record(u"app-"_s + paths.at(i));
    }
    for (int n = 0; n < 50; ++n) {
        m_usage.record(u"sys-sleep"_s);
        m_usage.record(u"app-/gone/Old.app"_s);
    }

    for (const char *query : {"", "   ", "\t"}) {
        const QList<LauncherResult> rows = m_engine->quickResults(QString::fromUtf8(query));
        ASSERT_EQ(rows.size(), 6) << "'" << query << "'";
        for (int i = 0; i < 6; ++i) {
            EXPECT_EQ(rows.at(i).id, u"app-"_s + paths.at(7 - i));
            EXPECT_EQ(rows.at(i).subtitle, u"Frequently used"_s);
        }
    }
}

TEST_F(LauncherEngineTest, rowsCaptureActionsOrFollowTheEngineAsDocumented)
{
    install({u"Safari"_s});
    const LauncherResult calc = m_engine->quickResults(u"1+1"_s).first();
    const LauncherResult app = m_engine->quickResults(u"safari"_s).first();
    m_engine->actions = recordingActions(u"new "_s);
    calc.primary();
    app.primary();
    app.secondary();
    const QString url = QString::fromUtf8(QUrl::fromLocalFile(m_apps.filePath(u"Safari.app"_s)).toEncoded());
    EXPECT_EQ(m_log, (QStringList{u"copy 2"_s, u"new open "_s + url, u"reveal "_s + url}));

    m_log.clear();
    m_engine.reset();
    app.primary();
    EXPECT_TRUE(m_log.isEmpty()) << "an application row does nothing once its engine is gone";
    EXPECT_EQ(m_usage.count(app.id), 1);
}

TEST_F(LauncherEngineTest, fileRowsNameTheFolderFromHomeAndOpenOrReveal)
{
    std::optional<QList<LauncherResult>> rows;
    m_engine->fileResults(u" report "_s, [&](const QList<LauncherResult> &found) { rows = found; });
    ASSERT_EQ(m_backend.searches().size(), 1);
    EXPECT_EQ(m_backend.searches().first().text, u"report"_s);
    m_backend.deliver(0, {home + u"/Documents/report.pdf"_s, home + u"/report.txt"_s, u"/srv/share/report.odt"_s});
    ASSERT_TRUE(rows);
    ASSERT_EQ(rows->size(), 3);
    const LauncherResult &pdf = rows->at(0);
    EXPECT_EQ(pdf.title, u"report.pdf"_s);
    EXPECT_EQ(pdf.subtitle, u"~/Documents"_s);
    EXPECT_EQ(rows->at(1).subtitle, u"~"_s);
    EXPECT_EQ(rows->at(2).subtitle, u"/srv/share"_s);
    pdf.primary();
    pdf.secondary();
    EXPECT_EQ(m_log,
        (QStringList{
            u"open file:///home/ada/Documents/report.pdf"_s, u"reveal file:///home/ada/Documents/report.pdf"_s}));
}

TEST_F(LauncherEngineTest, noFileSearchForShortTextCalculationsOrWhenSwitchedOff)
{
    struct Case {
        const char *query;
        bool filesOn;
    } const cases[] = {{"r", true}, {" r ", true}, {"2+3", true}, {"report", false}};
    for (const Case &c : cases) {
        setSettings([](SettingsData &data) { data.launcherFiles = true; });
        m_engine->fileResults(u"older"_s, [](const QList<LauncherResult> &) { FAIL() << "cancelled"; });
        setSettings([&c](SettingsData &data) { data.launcherFiles = c.filesOn; });
        int calls = 0;
        m_engine->fileResults(QString::fromUtf8(c.query), [&calls](const QList<LauncherResult> &rows) {
            ++calls;
            EXPECT_TRUE(rows.isEmpty());
        });
        EXPECT_EQ(calls, 1) << c.query;
        EXPECT_TRUE(m_backend.searches().last().stopped) << c.query << ": the running search is cancelled";
        m_backend.deliver(int(m_backend.searches().size()) - 1, {home + u"/older.txt"_s});
    }
}

// Where merged rows go is the launcher model's test; this guards what a later answer replaces.
TEST(LauncherEngine, mergedFileRowsReplaceThoseOfAnEarlierAnswer)
{
    const auto row = [](const QString &id, Kind kind) {
        LauncherResult result;
        result.id = id;
        result.kind = kind;
        return result;
    };
    const QList<LauncherResult> merged{
        row(u"app-a"_s, Kind::app), row(u"file-old"_s, Kind::file), row(u"web-fallback"_s, Kind::web)};
    EXPECT_EQ(ids(LauncherEngine::mergeFileRows(merged, {row(u"file-new"_s, Kind::file)})),
        (QStringList{u"app-a"_s, u"file-new"_s, u"web-fallback"_s}));
    EXPECT_EQ(ids(LauncherEngine::mergeFileRows(merged, {})), (QStringList{u"app-a"_s, u"web-fallback"_s}));
}

class RecordingOpener final : public DesktopOpener {
public:
    bool openUrl(const QUrl &url) override { return log(u"url "_s + url.toString()); }
    bool openFile(const QString &path) override { return log(u"file "_s + path); }
    bool openApplication(const QString &path) override { return log(u"app "_s + path); }
    bool revealInFileManager(const QString &path) override { return log(u"reveal "_s + path); }

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
    const QString app = FakeApplicationCatalog::addApp(dir.path(), u"Editor"_s);
    AppIndex index(std::make_shared<FakeApplicationCatalog>(), {dir.path()});
    index.refresh(true);
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();

    RecordingOpener opener;
    LauncherActions actions;
    actions.openThrough(opener, index);
    actions.open(QUrl::fromLocalFile(app));
    actions.open(QUrl::fromLocalFile(dir.filePath(u"notes.txt"_s)));
    actions.open(QUrl(u"https://example.com/?q=a"_s));
    actions.reveal(QUrl::fromLocalFile(app));
    EXPECT_EQ(opener.calls,
        (QStringList{u"app "_s + app, u"file "_s + dir.filePath(u"notes.txt"_s), u"url https://example.com/?q=a"_s,
            u"reveal "_s + app}));
}

} // namespace
} // namespace tessary

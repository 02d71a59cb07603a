#include "core/launcher/launcher_model.h"

#include "core/launcher/launcher_source.h"

#include <QStringList>
#include <QTest>

#include <gtest/gtest.h>

#include <vector>

namespace tessary {
namespace {

using namespace std::chrono_literals;
using Kind = LauncherResult::Kind;

using Names = std::vector<const char *>;

QStringList strings(const Names &names)
{
    QStringList result;
    for (const char *name : names)
        result.append(QString::fromUtf8(name));
    return result;
}

LauncherResult row(const QString &id, Kind kind = Kind::app)
{
    LauncherResult result;
    result.id = id;
    result.kind = kind;
    return result;
}

QList<LauncherResult> rows(const Names &names)
{
    QList<LauncherResult> result;
    for (const QString &id : strings(names))
        result.append(row(id, id.startsWith(QLatin1String("file-")) ? Kind::file : Kind::app));
    return result;
}

QStringList ids(const QList<LauncherResult> &results)
{
    QStringList result;
    for (const LauncherResult &r : results)
        result.append(r.id);
    return result;
}

// Answers quick rows from a table and keeps each file search's completion for
// the test to answer.
class ScriptedSource final : public LauncherSource {
public:
    QHash<QString, QList<LauncherResult>> quick;
    QStringList fileSearches;
    std::function<void(const QList<LauncherResult> &)> pending;

    QList<LauncherResult> quickResults(const QString &query) override { return quick.value(query); }
    void fileResults(const QString &query, std::function<void(const QList<LauncherResult> &rows)> completion) override
    {
        fileSearches.append(query);
        pending = std::move(completion);
    }
};

class LauncherModelTest : public ::testing::Test {
protected:
    ScriptedSource source;
};

TEST_F(LauncherModelTest, heightIsTheSearchRowAloneOrGrowsByFiftyPerRow)
{
    EXPECT_EQ(LauncherModel::heightFor(0), 66);
    EXPECT_EQ(LauncherModel::heightFor(1), 128);
    EXPECT_EQ(LauncherModel::heightFor(9), 528);
    source.quick[QString()] = rows({"app-a", "app-b"});
    EXPECT_EQ(LauncherModel(source).height(), 178);
}

TEST_F(LauncherModelTest, typingQuicklyStartsOneFileSearchForTheLastText)
{
    source.quick[QStringLiteral("not")] = rows({"app-notes"});
    LauncherModel model(source, 40ms);
    model.setQuery(QStringLiteral("no"));
    model.setQuery(QStringLiteral("not"));
    EXPECT_EQ(ids(model.results()), strings({"app-notes"})) << "quick rows come at once";
    EXPECT_TRUE(source.fileSearches.isEmpty());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !source.fileSearches.isEmpty(); }, 2000));
    QTest::qWait(100);
    EXPECT_EQ(source.fileSearches, strings({"not"}));
    model.setQuery(QStringLiteral("not"));
    QTest::qWait(100);
    EXPECT_EQ(source.fileSearches.size(), 1) << "the same text is no change";
}

TEST_F(LauncherModelTest, fileRowsGoBeforeTheFallbackAtMostFiveAndOnlyForTheCurrentText)
{
    const Names sevenFiles = {"file-1", "file-2", "file-3", "file-4", "file-5", "file-6", "file-7"};
    const struct {
        const char *name;
        Names quick;
        Names files;
        bool stale;
        Names expected;
    } cases[] = {
        {"before the fallback", {"app-a", "web-fallback"}, {"file-1", "file-2"}, false,
            {"app-a", "file-1", "file-2", "web-fallback"}},
        {"at most five", {"web-fallback"}, sevenFiles, false,
            {"file-1", "file-2", "file-3", "file-4", "file-5", "web-fallback"}},
        {"at the end without a fallback", {"app-a"}, {"file-1"}, false, {"app-a", "file-1"}},
        {"an answer for older text is dropped", {"app-a", "web-fallback"}, {"file-1"}, true, {"app-a", "web-fallback"}},
    };
    for (const auto &c : cases) {
        source.quick[QStringLiteral("report")] = rows(c.quick);
        LauncherModel model(source, 1ms);
        model.setQuery(QStringLiteral("report"));
        ASSERT_TRUE(QTest::qWaitFor([&] { return bool(source.pending); }, 2000)) << c.name;
        const int selected = int(c.quick.size()) - 1;
        model.select(selected);
        if (c.stale)
            model.setQuery(QStringLiteral("repo"));
        std::exchange(source.pending, nullptr)(rows(c.files));
        if (c.stale)
            model.setQuery(QStringLiteral("report"));
        EXPECT_EQ(ids(model.results()), strings(c.expected)) << c.name;
        if (!c.stale) {
            EXPECT_EQ(model.selection(), selected) << c.name << ": merging keeps the selection";
        }
        source.pending = nullptr;
    }
}

TEST_F(LauncherModelTest, movingWrapsAroundAndDoesNothingWithoutRows)
{
    source.quick[QStringLiteral("x")] = rows({"app-a", "app-b", "app-c"});
    LauncherModel model(source);
    model.move(1);
    EXPECT_EQ(model.selection(), 0) << "no rows";
    model.setQuery(QStringLiteral("x"));
    const struct {
        int step;
        int selection;
    } steps[] = {{-1, 2}, {1, 0}, {1, 1}, {1, 2}, {1, 0}, {-4, 2}};
    for (const auto &s : steps) {
        model.move(s.step);
        EXPECT_EQ(model.selection(), s.selection) << s.step;
    }
    model.setQuery(QStringLiteral("xy"));
    EXPECT_EQ(model.selection(), 0) << "a new text selects the first row";
}

TEST_F(LauncherModelTest, activatingClosesFirstThenRunsTheAskedAction)
{
    QStringList log;
    LauncherResult calc = row(QStringLiteral("calc"), Kind::calc);
    calc.primary = [&] { log.append(QStringLiteral("copy")); };
    calc.secondary = [&] { log.append(QStringLiteral("paste")); };
    LauncherResult app = row(QStringLiteral("app-a"));
    app.primary = [&] { log.append(QStringLiteral("open")); };
    source.quick[QStringLiteral("12*7")] = {calc, app};

    const struct {
        int selection;
        bool secondary;
        Names expected;
    } cases[] = {
        {0, false, {"close", "copy"}},
        {0, true, {"close", "paste"}},
        {1, true, {"close", "open"}},
    };
    for (const auto &c : cases) {
        LauncherModel model(source);
        model.close = [&] { log.append(QStringLiteral("close")); };
        model.setQuery(QStringLiteral("12*7"));
        model.select(c.selection);
        log.clear();
        model.activate(c.secondary);
        EXPECT_EQ(log, strings(c.expected)) << c.selection << c.secondary;
    }

    LauncherModel empty(source);
    empty.close = [&] { log.append(QStringLiteral("close")); };
    log.clear();
    empty.activate(false);
    EXPECT_TRUE(log.isEmpty()) << "no rows: nothing happens";
}

} // namespace
} // namespace tessary

#include "core/launcher/app_index.h"

#include "platform/fake/launcher/fake_application_catalog.h"

#include <QCoreApplication>
#include <QDir>
#include <QLocale>
#include <QTemporaryDir>
#include <QThreadPool>

#include <gtest/gtest.h>

namespace tessary {
namespace {

using Key = FakeApplicationCatalog::Key;

QStringList names(const QList<AppEntry> &apps)
{
    QStringList result;
    for (const AppEntry &app : apps)
        result.append(app.name);
    return result;
}

// Lets every background scan finish and its result arrive on this thread.
void settle()
{
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();
}

class AppIndexScan : public ::testing::Test {
protected:
    QString folder(const QString &relative) const
    {
        const QString path = m_dir.filePath(relative);
        QDir().mkpath(path);
        return path;
    }

    QTemporaryDir m_dir;
};

TEST_F(AppIndexScan, anEntryWithoutADisplayNameGoesByItsFileName)
{
    const QString root = folder(QStringLiteral("Applications"));
    const QString beta = FakeApplicationCatalog::addApp(root, QStringLiteral("Beta"));
    FakeApplicationCatalog::addApp(root, QStringLiteral("Alpha"), QStringLiteral("Alpha Pro"));

    const QList<AppEntry> apps = AppIndex::scan({root}, FakeApplicationCatalog());
    EXPECT_EQ(names(apps), (QStringList{QStringLiteral("Alpha Pro"), QStringLiteral("Beta")}));
    EXPECT_EQ(apps.at(1), (AppEntry{QStringLiteral("Beta"), QStringLiteral("Beta"), QUrl::fromLocalFile(beta)}));
    EXPECT_EQ(apps.at(0).fileName, QStringLiteral("Alpha"));
}

TEST_F(AppIndexScan, looksThreeLevelsDeepAndNeverInsideAnEntryOrAHiddenFolder)
{
    const QString root = folder(QStringLiteral("root"));
    struct Case {
        const char *folder;
        const char *app;
        bool found;
    } const cases[] = {
        {"", "Top", true},
        {"/a", "One", true},
        {"/a/b", "Two", true},
        {"/a/b/c", "Three", false},
        {"/Outer.app/Contents", "Inner", false},
        {"/.hidden", "Secret", false},
    };
    for (const Case &c : cases)
        FakeApplicationCatalog::addApp(root + QString::fromLatin1(c.folder), QString::fromLatin1(c.app));

    const QStringList found = names(AppIndex::scan({root}, FakeApplicationCatalog()));
    for (const Case &c : cases)
        EXPECT_EQ(found.contains(QString::fromLatin1(c.app)), c.found) << c.folder << "/" << c.app;
    EXPECT_TRUE(found.contains(QStringLiteral("Outer")));
}

TEST_F(AppIndexScan, rootsAreTakenInOrderAndEachPathOnce)
{
    const QString first = folder(QStringLiteral("first"));
    const QString second = folder(QStringLiteral("second"));
    const QString direct = FakeApplicationCatalog::addApp(folder(QStringLiteral("third")), QStringLiteral("Direct"));
    FakeApplicationCatalog::addApp(first, QStringLiteral("Same"), QStringLiteral("Same (first)"));
    FakeApplicationCatalog::addApp(second, QStringLiteral("Same"), QStringLiteral("Same (second)"));

    struct Case {
        const char *label;
        QStringList roots;
        Key key;
        QStringList expected;
    } const cases[] = {
        {"by path both stay", {first, second}, Key::path,
            {QStringLiteral("Same (first)"), QStringLiteral("Same (second)")}},
        {"a root listed twice counts once", {first, first}, Key::path, {QStringLiteral("Same (first)")}},
        {"by key the first root wins", {second, first}, Key::fileName, {QStringLiteral("Same (second)")}},
        {"a missing root is skipped", {m_dir.filePath(QStringLiteral("missing")), first}, Key::path,
            {QStringLiteral("Same (first)")}},
        {"an entry given as a root", {direct, direct}, Key::path, {QStringLiteral("Direct")}},
    };
    for (const Case &c : cases)
        EXPECT_EQ(names(AppIndex::scan(c.roots, FakeApplicationCatalog({}, c.key))), c.expected) << c.label;
}

TEST_F(AppIndexScan, aHiddenEntryStillShadowsLaterOnesWithItsKey)
{
    const QString user = folder(QStringLiteral("user"));
    const QString system = folder(QStringLiteral("system"));
    FakeApplicationCatalog::addApp(user, QStringLiteral("Editor"), {}, /*hidden*/ true);
    FakeApplicationCatalog::addApp(system, QStringLiteral("Editor"));
    FakeApplicationCatalog::addApp(system, QStringLiteral("Viewer"));

    EXPECT_EQ(names(AppIndex::scan({user, system}, FakeApplicationCatalog({}, Key::fileName))),
        QStringList{QStringLiteral("Viewer")});
}

TEST_F(AppIndexScan, sortsByLocalizedCaseInsensitiveName)
{
    const QString root = folder(QStringLiteral("root"));
    const QStringList given = {QStringLiteral("zeta"), QStringLiteral("Émile"), QStringLiteral("beta"),
        QStringLiteral("Alpha"), QStringLiteral("delta")};
    for (int i = 0; i < given.size(); ++i)
        FakeApplicationCatalog::addApp(root, QStringLiteral("app%1").arg(i), given.at(i));

    const QLocale previous;
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    EXPECT_EQ(names(AppIndex::scan({root}, FakeApplicationCatalog())),
        (QStringList{QStringLiteral("Alpha"), QStringLiteral("beta"), QStringLiteral("delta"), QStringLiteral("Émile"),
            QStringLiteral("zeta")}));
    QLocale::setDefault(previous);
}

TEST_F(AppIndexScan, refreshSkipsANonForcedScanWithinAMinuteOfTheLast)
{
    const QString root = folder(QStringLiteral("root"));
    FakeApplicationCatalog::addApp(root, QStringLiteral("First"));
    const QDateTime start = QDateTime::currentDateTimeUtc();
    QDateTime now = start;
    AppIndex index(std::make_shared<FakeApplicationCatalog>(), {root});
    index.setClock([&now] { return now; });
    EXPECT_TRUE(index.apps().isEmpty());
    EXPECT_FALSE(index.lastScan());

    index.refresh(false);
    settle();
    EXPECT_EQ(names(index.apps()), QStringList{QStringLiteral("First")});
    EXPECT_EQ(index.lastScan(), start);

    FakeApplicationCatalog::addApp(root, QStringLiteral("Second"));
    struct Step {
        int secondsLater;
        bool force;
        bool rescans;
    } const steps[] = {{59, false, false}, {59, true, true}, {59 + 59, false, false}, {59 + 60, false, true}};
    for (const Step &step : steps) {
        now = start.addSecs(step.secondsLater);
        const QDateTime before = *index.lastScan();
        index.refresh(step.force);
        settle();
        EXPECT_EQ(*index.lastScan() != before, step.rescans) << step.secondsLater << " force " << step.force;
    }
    EXPECT_EQ(names(index.apps()), (QStringList{QStringLiteral("First"), QStringLiteral("Second")}));
}

TEST_F(AppIndexScan, aScanFinishingAfterTheIndexIsGoneDeliversNothing)
{
    const QString root = folder(QStringLiteral("root"));
    FakeApplicationCatalog::addApp(root, QStringLiteral("Only"));
    {
        AppIndex index(std::make_shared<FakeApplicationCatalog>(), {root});
        index.refresh(true);
    }
    settle(); // must not touch the destroyed index (ASan watches)
}

} // namespace
} // namespace tessary

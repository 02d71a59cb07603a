#include "platform/x11/launcher/home_walk_file_search.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <optional>

namespace tessary {
namespace {

class HomeWalkFileSearchTest : public ::testing::Test {
protected:
    // A file last read and written `minutesAgo` minutes before now.
    QString file(const QString &relative, int minutesAgo = 60)
    {
        const QString path = m_home.filePath(relative);
        QDir().mkpath(path.section(QLatin1Char('/'), 0, -2));
        QFile f(path);
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        const QDateTime when = QDateTime::currentDateTime().addSecs(-60 * minutesAgo);
        f.setFileTime(when, QFileDevice::FileModificationTime);
        f.setFileTime(when, QFileDevice::FileAccessTime);
        return path;
    }

    std::optional<QStringList> search(HomeWalkFileSearch &backend, const QString &text)
    {
        std::optional<QStringList> found;
        backend.start(text, [&found](const QStringList &paths) { found = paths; });
        EXPECT_TRUE(QTest::qWaitFor([&] { return found.has_value(); }, 10000));
        return found;
    }

    QTemporaryDir m_home;
};

TEST_F(HomeWalkFileSearchTest, findsNamesIgnoringCaseAndAccentsMostRecentlyUsedFirst)
{
    const QString old = file(QStringLiteral("Documents/report-2023.txt"), 600);
    const QString fresh = file(QStringLiteral("Documents/Work/Q3 REPORT.pdf"), 5);
    const QString middle = file(QStringLiteral("Desktop/rapport-résumé.odt"), 60);
    const QString accented = file(QStringLiteral("Résumé.txt"), 30);
    file(QStringLiteral(".cache/report.tmp"), 1);
    file(QStringLiteral("web/node_modules/report/index.js"), 1);
    file(QStringLiteral("Documents/unrelated.txt"), 1);
    const QString folder = m_home.filePath(QStringLiteral("Reports"));
    QDir().mkpath(folder);

    HomeWalkFileSearch backend(m_home.path());
    EXPECT_EQ(search(backend, QStringLiteral("report")), (QStringList{folder, fresh, old}));
    EXPECT_EQ(search(backend, QStringLiteral("RESUME")), (QStringList{accented, middle}));
    EXPECT_EQ(search(backend, QStringLiteral("zzzqqq")), QStringList{});
}

TEST_F(HomeWalkFileSearchTest, boundsLimitTheWalkAndTheAnswer)
{
    for (int i = 0; i < 10; ++i)
        file(QStringLiteral("texts/note%1.txt").arg(i), i);
    file(QStringLiteral("a/b/c/d/deep-note.txt"), 0);
    file(QStringLiteral("note-top.txt"), 100); // home holds "a", "texts" and this

    struct Case {
        const char *label;
        HomeWalkFileSearch::Bounds bounds;
        qsizetype expected;
    } const cases[] = {
        {"unbounded", {}, 12},
        {"results", {200000, 12, 4, 30}, 4},
        {"depth", {200000, 3, 200, 30}, 11},
        {"entries", {3, 12, 200, 30}, 1},
    };
    for (const Case &c : cases) {
        HomeWalkFileSearch backend(m_home.path(), c.bounds);
        const std::optional<QStringList> found = search(backend, QStringLiteral("note"));
        ASSERT_TRUE(found) << c.label;
        EXPECT_EQ(found->size(), c.expected) << c.label;
    }
    HomeWalkFileSearch backend(m_home.path(), {200000, 12, 3, 30});
    EXPECT_EQ(search(backend, QStringLiteral("note")),
        (QStringList{m_home.filePath(QStringLiteral("a/b/c/d/deep-note.txt")),
            m_home.filePath(QStringLiteral("texts/note0.txt")), m_home.filePath(QStringLiteral("texts/note1.txt"))}));
}

TEST_F(HomeWalkFileSearchTest, aStoppedOrReplacedSearchNeverAnswers)
{
    file(QStringLiteral("alpha.txt"));
    file(QStringLiteral("beta.txt"));
    HomeWalkFileSearch backend(m_home.path());
    int stale = 0;
    backend.start(QStringLiteral("alpha"), [&stale](const QStringList &) { ++stale; });
    backend.stop();
    backend.start(QStringLiteral("alpha"), [&stale](const QStringList &) { ++stale; });
    EXPECT_EQ(search(backend, QStringLiteral("beta")), QStringList{m_home.filePath(QStringLiteral("beta.txt"))});
    QTest::qWait(50);
    EXPECT_EQ(stale, 0);
}

TEST(HomeWalkFileSearch, otherFileSystemsBelowHomeAreKnownFromTheMountTable)
{
    const QByteArray mountInfo = "22 1 8:1 / / rw - ext4 /dev/sda1 rw\n"
                                 "40 22 0:35 / /home/ann/nfs rw - nfs4 server:/export rw\n"
                                 "41 22 0:36 / /home/ann/My\\040Share rw - cifs //nas/share rw\n"
                                 "42 22 0:37 / /home/annex rw - tmpfs tmpfs rw\n"
                                 "43 22 0:38 / /home/ann rw - ext4 /dev/sdb1 rw\n";
    EXPECT_EQ(HomeWalkFileSearch::mountPointsBelow(mountInfo, QStringLiteral("/home/ann/")),
        (QSet<QString>{QStringLiteral("/home/ann/nfs"), QStringLiteral("/home/ann/My Share")}));
}

} // namespace
} // namespace tessary

#include "platform/x11/launcher/tracker_file_search.h"

#include "platform/fake/launcher/fake_file_search_backend.h"
#include "platform/x11/launcher/desktop_file_search.h"
#include "scratch_index_home.h"
#include "session/private_bus.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <gio/gio.h>
#include <gtest/gtest.h>

namespace tessary {
namespace {

using namespace Qt::StringLiterals;

// A real file index: Tracker's file miner, started by a private bus on first
// use, indexing one folder with its state in a scratch home. The folder is in
// the build tree because the miner leaves /tmp alone.
class TrackerFileSearchTest : public ::testing::Test, protected ScratchIndexHome {
protected:
    static void SetUpTestSuite()
    {
        s_root = new QTemporaryDir(QDir::current().filePath(u"tracker-XXXXXX"_s));
        const QString root = s_root->path();
        const QString files = root + u"/home/files"_s;
        QDir().mkpath(files + u"/.hidden"_s);
        QDir().mkpath(root + u"/config/glib-2.0/settings"_s);
        QFile keyfile(root + u"/config/glib-2.0/settings/keyfile"_s);
        if (keyfile.open(QIODevice::WriteOnly)) {
            keyfile.write("[org/freedesktop/tracker/miner/files]\nindex-recursive-directories=['" + files.toUtf8()
                + "']\nindex-single-directories=@as []\ninitial-sleep=0\nindex-applications=false\nthrottle=0\n");
        }
        ScratchIndexHome::writeDatedFiles(files,
            {{u"old-report.txt"_s, 300}, {u"new-Report.odt"_s, 10}, {u"mid report.txt"_s, 100}, {u"Résumé.pdf"_s, 50},
                {u"notes.txt"_s, 5}});
        QProcessEnvironment environment = ScratchIndexHome::environment(root);
        environment.insert(u"GSETTINGS_BACKEND"_s, u"keyfile"_s);
        s_bus = new PrivateBus(environment);
    }

    static void TearDownTestSuite()
    {
        // The miner leaves with the bus; its folder can go once it has.
        const QDBusReply<uint> miner
            = s_bus->connect(u"teardown"_s).interface()->servicePid(QString::fromLatin1(TrackerFileSearch::service));
        delete s_bus;
        if (miner.isValid()) {
            const QString process = u"/proc/"_s + QString::number(miner.value());
            static_cast<void>(QTest::qWaitFor([&process] { return !QFile::exists(process); }, 10000));
        }
        delete s_root;
    }

    void SetUp() override
    {
        ASSERT_TRUE(s_bus->isRunning());
        m_connection = g_dbus_connection_new_for_address_sync(s_bus->address().toUtf8().constData(),
            GDBusConnectionFlags(
                G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, nullptr);
        ASSERT_NE(m_connection, nullptr);
    }

    void TearDown() override
    {
        if (m_connection)
            g_object_unref(m_connection);
    }

    static QString file(const QString &name) { return s_root->path() + u"/home/files/"_s + name; }

    static QTemporaryDir *s_root;
    static PrivateBus *s_bus;
    GDBusConnection *m_connection = nullptr;
};

QTemporaryDir *TrackerFileSearchTest::s_root = nullptr;
PrivateBus *TrackerFileSearchTest::s_bus = nullptr;

TEST_F(TrackerFileSearchTest, findsNamesIgnoringCaseAndAccentsNewestFirst)
{
    TrackerFileSearch index(s_root->path() + u"/home"_s, m_connection);
    EXPECT_EQ(lines(searchOnceIndexed(index, u"REPORT"_s, 3)),
        lines(QStringList{file(u"new-Report.odt"_s), file(u"mid report.txt"_s), file(u"old-report.txt"_s)}));
    EXPECT_EQ(lines(searchOnceIndexed(index, u"resume"_s, 1)), lines(QStringList{file(u"Résumé.pdf"_s)}));
    EXPECT_EQ(lines(search(index, u"nothing-like-this"_s)), lines(QStringList()));

    TrackerFileSearch elsewhere(s_root->path() + u"/other"_s, m_connection);
    EXPECT_EQ(lines(search(elsewhere, u"report"_s)), lines(QStringList())) << "only files below the home folder";
}

TEST_F(TrackerFileSearchTest, aStoppedSearchNeverAnswers)
{
    TrackerFileSearch index(s_root->path() + u"/home"_s, m_connection);
    bool answered = false;
    index.start(u"report"_s, [&answered](const QStringList &) { answered = true; });
    index.stop();
    const auto next = search(index, u"notes"_s);
    EXPECT_TRUE(next.has_value());
    EXPECT_FALSE(answered);
}

TEST_F(TrackerFileSearchTest, theDesktopSearchUsesTheIndexOnlyWhileItRuns)
{
    const QDBusConnection bus = s_bus->connect(u"watcher"_s);
    FakeFileSearchBackend index;
    FakeFileSearchBackend walk;
    DesktopFileSearch absent(index, u"org.example.NoIndex"_s, walk, bus);
    DesktopFileSearch running(index, QString::fromLatin1(TrackerFileSearch::service), walk, bus);
    TrackerFileSearch tracker(s_root->path() + u"/home"_s, m_connection);
    searchOnceIndexed(tracker, u"notes"_s, 1);
    ASSERT_TRUE(QTest::qWaitFor([&running] { return running.usesIndex(); }, 5000));

    absent.start(u"a"_s, [](const QStringList &) {});
    running.start(u"b"_s, [](const QStringList &) {});
    ASSERT_EQ(walk.searches().size(), 1);
    EXPECT_EQ(walk.searches().first().text, u"a"_s);
    ASSERT_EQ(index.searches().size(), 1);
    EXPECT_EQ(index.searches().first().text, u"b"_s);
}

} // namespace
} // namespace tessary

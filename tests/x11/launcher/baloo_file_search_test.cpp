#include "platform/x11/launcher/baloo_file_search.h"

#include "scratch_index_home.h"
#include "session/private_bus.h"

#include <QDBusConnectionInterface>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace tessary {
namespace {

using namespace Qt::StringLiterals;

// A real file index: KDE's file indexer on a private bus, indexing one folder
// of a scratch home. Its search client reads the index where XDG_DATA_HOME
// says, so this process points there too while the suite runs.
class BalooFileSearchTest : public ::testing::Test, protected ScratchIndexHome {
protected:
    static void SetUpTestSuite()
    {
        s_root = new QTemporaryDir(QDir::current().filePath(u"baloo-XXXXXX"_s));
        const QString root = s_root->path();
        const QString files = root + u"/home/files"_s;
        QDir().mkpath(files);
        QDir().mkpath(root + u"/config"_s);
        QDir().mkpath(root + u"/runtime"_s);
        QFile::setPermissions(
            root + u"/runtime"_s, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        QFile config(root + u"/config/baloofilerc"_s);
        if (config.open(QIODevice::WriteOnly)) {
            config.write("[General]\nfolders[$e]=" + files.toUtf8()
                + "\nexclude folders[$e]=\nonly basic indexing=true\n\n[Basic Settings]\nIndexing-Enabled=true\n");
        }
        ScratchIndexHome::writeDatedFiles(files,
            {{u"old-report.txt"_s, 300}, {u"new-Report.odt"_s, 10}, {u"mid report.txt"_s, 100}, {u"Résumé.pdf"_s, 50}});
        QProcessEnvironment environment = ScratchIndexHome::environment(root);
        environment.insert(u"XDG_RUNTIME_DIR"_s, root + u"/runtime"_s);
        environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        s_bus = new PrivateBus(environment);
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, s_bus->address());
        s_indexer = new QProcess;
        s_indexer->setProcessEnvironment(environment);
        s_indexer->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        s_indexer->setStandardOutputFile(QProcess::nullDevice());
        s_indexer->start(u"baloo_file"_s, {});
        s_dataHome = qgetenv("XDG_DATA_HOME");
        qputenv("XDG_DATA_HOME", QFile::encodeName(root + u"/data"_s));
    }

    static void TearDownTestSuite()
    {
        qputenv("XDG_DATA_HOME", s_dataHome);
        s_indexer->terminate();
        s_indexer->waitForFinished(10000);
        delete s_indexer;
        delete s_bus;
        delete s_root;
    }

    static QString home() { return s_root->path() + u"/home"_s; }
    static QString file(const QString &name) { return home() + u"/files/"_s + name; }

    static QTemporaryDir *s_root;
    static PrivateBus *s_bus;
    static QProcess *s_indexer;
    static QByteArray s_dataHome;
};

QTemporaryDir *BalooFileSearchTest::s_root = nullptr;
PrivateBus *BalooFileSearchTest::s_bus = nullptr;
QProcess *BalooFileSearchTest::s_indexer = nullptr;
QByteArray BalooFileSearchTest::s_dataHome;

TEST_F(BalooFileSearchTest, findsNamesByTheirWordsNewestFirst)
{
    ASSERT_TRUE(QTest::qWaitFor(
        [] {
            return s_bus->connect(u"watcher"_s)
                .interface()
                ->isServiceRegistered(QString::fromLatin1(BalooFileSearch::service));
        },
        30000))
        << "the indexer takes its name on the session bus";
    BalooFileSearch index(home());
    EXPECT_EQ(lines(searchOnceIndexed(index, u"REPORT"_s, 3)),
        lines(QStringList{file(u"new-Report.odt"_s), file(u"mid report.txt"_s), file(u"old-report.txt"_s)}));
    for (const QString &accented : {u"resume"_s, u"Re\u0301sume\u0301"_s})
        EXPECT_EQ(lines(search(index, accented)), lines(QStringList{file(u"Résumé.pdf"_s)}));
    EXPECT_EQ(lines(search(index, u"new-rep"_s)), lines(QStringList{file(u"new-Report.odt"_s)}));
    EXPECT_EQ(lines(search(index, u"nothing-like-this"_s)), lines(QStringList()));
    EXPECT_EQ(lines(search(index, u" -- "_s)), lines(QStringList())) << "no words, no search";

    BalooFileSearch elsewhere(s_root->path() + u"/other"_s);
    EXPECT_EQ(lines(search(elsewhere, u"report"_s)), lines(QStringList())) << "only files below the home folder";
    BalooFileSearch missing(home(), u"/nonexistent/baloosearch"_s);
    EXPECT_EQ(lines(search(missing, u"report"_s)), lines(QStringList()));
}

TEST_F(BalooFileSearchTest, aStoppedSearchNeverAnswers)
{
    BalooFileSearch index(home());
    bool answered = false;
    index.start(u"report"_s, [&answered](const QStringList &) { answered = true; });
    index.stop();
    const auto next = search(index, u"notes"_s);
    EXPECT_TRUE(next.has_value());
    EXPECT_FALSE(answered);
}

} // namespace
} // namespace tessary

#include "platform/x11/launcher/gio_desktop_opener.h"

#include "gio_test_environment.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace tessary {
namespace {

const GioTestEnvironment &env() { return GioTestEnvironment::instance(); }

QString run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(10000);
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

TEST(GioDesktopOpener, handsUrlsAndFilesToTheDefaultHandler)
{
    GioDesktopOpener opener;
    QTemporaryDir dir;
    const QString note = dir.filePath(QStringLiteral("note.txt"));
    QFile file(note);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("hello\n");
    file.close();

    EXPECT_TRUE(opener.openUrl(QUrl(QStringLiteral("https://example.com/search?q=cats%20%26%20dogs"))));
    EXPECT_TRUE(env().recorderLogged(QStringLiteral("started https://example.com/search?q=cats%20%26%20dogs")));
    EXPECT_TRUE(opener.openFile(note));
    EXPECT_TRUE(env().recorderLogged(note));
}

TEST(GioDesktopOpener, refusesWhatItCannotOpen)
{
    GioDesktopOpener opener;
    EXPECT_FALSE(opener.openFile(QStringLiteral("/nonexistent/file.txt")));
    EXPECT_FALSE(opener.openUrl(QUrl(QStringLiteral("no-handler-scheme:thing"))));
    EXPECT_FALSE(opener.openUrl(QUrl()));
    EXPECT_FALSE(opener.openApplication(QStringLiteral("/nonexistent/app.desktop")));
    EXPECT_FALSE(opener.revealInFileManager(QStringLiteral("/nonexistent/file.txt")));
}

TEST(GioDesktopOpener, revealWithoutAFileManagerOpensTheFolder)
{
    GioDesktopOpener opener;
    QTemporaryDir dir;
    const QString folder = dir.filePath(QStringLiteral("reports"));
    QDir().mkpath(folder);
    const QString report = folder + QStringLiteral("/q3.pdf");
    QFile(report).open(QIODevice::WriteOnly);

    EXPECT_TRUE(opener.revealInFileManager(report));
    EXPECT_TRUE(env().recorderLogged(QStringLiteral("started ") + folder + QLatin1Char('\n')));
}

TEST(GioDesktopOpener, launchesADesktopEntry)
{
    GioDesktopOpener opener;
    EXPECT_TRUE(opener.openApplication(env().recorderEntry()));
    EXPECT_TRUE(env().recorderLogged(QStringLiteral("started \n")));
}

TEST(GioDesktopOpener, launchesTheSystemsTerminalOnTheDisplay)
{
    const QString entry = QStringLiteral("/usr/share/applications/debian-xterm.desktop");
    if (!QFile::exists(entry))
        GTEST_SKIP() << "no XTerm desktop entry on this machine";
    GioDesktopOpener opener;
    ASSERT_TRUE(opener.openApplication(entry));
    const QStringList search{QStringLiteral("search"), QStringLiteral("--class"), QStringLiteral("XTerm")};
    QString windows;
    EXPECT_TRUE(QTest::qWaitFor([&] { return !(windows = run(QStringLiteral("xdotool"), search)).isEmpty(); }, 10000));
    for (const QString &window : windows.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        run(QStringLiteral("xdotool"), {QStringLiteral("windowkill"), window});
}

} // namespace
} // namespace tessary

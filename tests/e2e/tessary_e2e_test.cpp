// The built tessary with a fresh home in the test X session, observed only
// through real clients (xdotool, xclip, xwininfo, xprop) and the files it writes.
#include "desktop_clients.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRect>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <optional>

namespace {

using tessary::DesktopClients::run;
using tessary::DesktopClients::xdotool;

void copyText(const QByteArray &text)
{
    // xclip forks a process that serves the selection until another owner takes it.
    run(QStringLiteral("xclip"), {QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-i")},
        text);
}

// The window as the user sees it: client area plus the window manager's frame.
std::optional<QRect> outerFrame(quint64 window)
{
    const QString id = QString::number(window);
    const QString info = run(QStringLiteral("xwininfo"), {QStringLiteral("-id"), id});
    const QString extents
        = run(QStringLiteral("xprop"), {QStringLiteral("-id"), id, QStringLiteral("_NET_FRAME_EXTENTS")});
    const auto number = [&](const QString &label) {
        const QRegularExpressionMatch match = QRegularExpression(label + QStringLiteral(R"(:\s+(-?\d+))")).match(info);
        return match.hasMatch() ? std::optional<int>(match.captured(1).toInt()) : std::nullopt;
    };
    const QRegularExpressionMatch frame
        = QRegularExpression(QStringLiteral(R"(= (\d+), (\d+), (\d+), (\d+))")).match(extents);
    const auto x = number(QStringLiteral("Absolute upper-left X"));
    const auto y = number(QStringLiteral("Absolute upper-left Y"));
    const auto width = number(QStringLiteral("Width"));
    const auto height = number(QStringLiteral("Height"));
    if (!x || !y || !width || !height || !frame.hasMatch())
        return std::nullopt;
    const int left = frame.captured(1).toInt(), right = frame.captured(2).toInt();
    const int top = frame.captured(3).toInt(), bottom = frame.captured(4).toInt();
    return QRect(*x - left, *y - top, *width + left + right, *height + top + bottom);
}

class Tessary : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(home.isValid());
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), home.path());
        for (const char *name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME"})
            environment.remove(QString::fromLatin1(name));
        environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("tessary.app.info=true"));
        m_environment = environment;
        tessary.setProcessEnvironment(environment);
        launch();
    }

    void launch()
    {
        m_stderr.clear();
        tessary.start(QStringLiteral(TESSARY_BINARY), {});
        ASSERT_TRUE(tessary.waitForStarted());
        ASSERT_TRUE(QTest::qWaitFor([&] { return stderrText().contains(QLatin1String("ready at")); }, 20000))
            << stderrText().toStdString();
    }

    void TearDown() override
    {
        tessary.terminate();
        if (!tessary.waitForFinished(5000))
            tessary.kill();
    }

    QString stderrText()
    {
        m_stderr += QString::fromLocal8Bit(tessary.readAllStandardError());
        return m_stderr;
    }

    // Runs a second tessary with the same home and display; its exit code.
    int startAgain(const QStringList &arguments)
    {
        QProcess second;
        second.setProcessEnvironment(m_environment);
        second.start(QStringLiteral(TESSARY_BINARY), arguments);
        if (!second.waitForFinished(20000))
            return -1;
        return second.exitStatus() == QProcess::NormalExit ? second.exitCode() : -1;
    }

    QString fileText(const QString &relative) const
    {
        QFile file(home.filePath(relative));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }
    QString history() const { return fileText(QStringLiteral(".local/share/Tessary/clipboard.json")); }
    QString log() const { return fileText(QStringLiteral(".local/state/Tessary/Tessary.log")); }

    QTemporaryDir home;
    QProcess tessary;

private:
    QProcessEnvironment m_environment;
    QString m_stderr;
};

TEST_F(Tessary, snapsTheActiveXtermToItsMonitorsLeftHalfAndRestoresIt)
{
    QProcess xterm;
    xterm.start(QStringLiteral("xterm"), {QStringLiteral("-title"), QStringLiteral("tessary-e2e-xterm")});
    const quint64 window = xdotool({QStringLiteral("search"), QStringLiteral("--sync"), QStringLiteral("--name"),
                                       QStringLiteral("tessary-e2e-xterm")})
                               .toULongLong();
    ASSERT_NE(window, 0u);
    ASSERT_TRUE(QTest::qWaitFor([&] { return xdotool({QStringLiteral("getactivewindow")}).toULongLong() == window; }));
    const std::optional<QRect> before = outerFrame(window);
    ASSERT_TRUE(before);

    xdotool({QStringLiteral("key"), QStringLiteral("ctrl+alt+Left")});
    // The left half of the 1920x1080 monitor; xterm rounds its size down to whole character cells.
    const auto isLeftHalf = [](const QRect &frame) {
        return frame.topLeft() == QPoint(0, 0) && frame.width() > 940 && frame.width() <= 960 && frame.height() > 1060
            && frame.height() <= 1080;
    };
    std::optional<QRect> snapped;
    EXPECT_TRUE(QTest::qWaitFor([&] {
        snapped = outerFrame(window);
        return snapped && isLeftHalf(*snapped);
    })) << (snapped ? snapped->width() : -1);
    EXPECT_TRUE(log().contains(QLatin1String(" +0000 shortcut fired: leftHalf\n"))) << log().toStdString();

    xdotool({QStringLiteral("key"), QStringLiteral("ctrl+alt+BackSpace")});
    std::optional<QRect> restored;
    EXPECT_TRUE(QTest::qWaitFor([&] {
        restored = outerFrame(window);
        return restored == before;
    }));
    EXPECT_TRUE(log().contains(QLatin1String("shortcut fired: restore\n")));
    xterm.kill();
    xterm.waitForFinished();
}

// A tiling window manager sizes windows itself: the snap ends in the failure
// toast (44 pixels high, Tessary's only window on show besides the start-up
// toasts) within a second, and
// the window stays where the window manager put it.
TEST_F(Tessary, underATilingWindowManagerASnapEndsInTheFailureToast)
{
    if (qEnvironmentVariable("TESSARY_TEST_WM") != QLatin1String("i3"))
        GTEST_SKIP() << "needs a tiling window manager";
    QProcess xterm;
    xterm.start(QStringLiteral("xterm"), {QStringLiteral("-title"), QStringLiteral("tessary-e2e-tiled")});
    const quint64 window = xdotool({QStringLiteral("search"), QStringLiteral("--sync"), QStringLiteral("--name"),
                                       QStringLiteral("tessary-e2e-tiled")})
                               .toULongLong();
    ASSERT_NE(window, 0u);
    ASSERT_TRUE(QTest::qWaitFor([&] { return xdotool({QStringLiteral("getactivewindow")}).toULongLong() == window; }));
    const std::optional<QRect> tiled = outerFrame(window);
    const QString pid = QString::number(tessary.processId());
    const auto toastShown = [&] {
        const QStringList shown
            = xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--pid"), pid})
                  .split(u'\n', Qt::SkipEmptyParts);
        for (const QString &id : shown) {
            const QString size = xdotool({QStringLiteral("getwindowgeometry"), id});
            if (size.contains(QLatin1String("x44\n")) || size.endsWith(QLatin1String("x44")))
                return true;
        }
        return false;
    };
    // The start-up toasts go first.
    ASSERT_TRUE(QTest::qWaitFor([&] { return !toastShown(); }, 8000));

    QElapsedTimer timer;
    timer.start();
    xdotool({QStringLiteral("key"), QStringLiteral("ctrl+alt+u")});
    EXPECT_TRUE(QTest::qWaitFor(toastShown, 3000));
    EXPECT_LT(timer.elapsed(), 1500) << "the press, xdotool and the search take their share of it";
    EXPECT_TRUE(log().contains(QLatin1String("shortcut fired: topLeft\n"))) << log().toStdString();
    EXPECT_EQ(outerFrame(window), tiled);
    xterm.kill();
    xterm.waitForFinished();
}

TEST_F(Tessary, recordsACopyWithinASecondUnlessPausedFromTheMenu)
{
    copyText("copied while running");
    EXPECT_TRUE(QTest::qWaitFor([&] { return history().contains(QLatin1String("copied while running")); }, 1000));

    ASSERT_EQ(startAgain({QStringLiteral("--menu"), QStringLiteral("Pause Clipboard History")}), 0);
    copyText("copied while paused");
    QTest::qWait(1500);
    EXPECT_FALSE(history().contains(QLatin1String("copied while paused")));

    // Resumed, the very same kind of copy is recorded again.
    ASSERT_EQ(startAgain({QStringLiteral("--menu"), QStringLiteral("Pause Clipboard History")}), 0);
    copyText("copied after resuming");
    EXPECT_TRUE(QTest::qWaitFor([&] { return history().contains(QLatin1String("copied after resuming")); }, 1000));
}

TEST_F(Tessary, aSecondStartExitsAndLeavesTheFirstRunning)
{
    EXPECT_EQ(startAgain({}), 0);
    EXPECT_EQ(tessary.state(), QProcess::Running);
    // A child forked on the way to starting a helper (a session bus) carries the
    // same command line for a moment: wait until only instances remain.
    QString processes;
    EXPECT_TRUE(QTest::qWaitFor([&] {
        processes = run(QStringLiteral("pgrep"), {QStringLiteral("-f"), QStringLiteral(TESSARY_BINARY)});
        return processes.split(QLatin1Char('\n'), Qt::SkipEmptyParts).size() == 1;
    })) << processes.toStdString();
    // Said once, in the log and on stderr: the test session has no tray.
    EXPECT_TRUE(QTest::qWaitFor([&] { return stderrText().contains(QLatin1String("menu is unavailable")); }));
    EXPECT_EQ(log().count(QLatin1String("the Tessary menu is unavailable")), 1);
    EXPECT_EQ(stderrText().count(QLatin1String("the Tessary menu is unavailable")), 1);
}

TEST_F(Tessary, terminationSignalsLandTheHistoryAndTheNextStartClearsInterruptedWrites)
{
    const QString stale = home.filePath(QStringLiteral(".local/share/Tessary/clipboard.json.Ab12Cd"));
    for (int signal : {SIGTERM, SIGINT, SIGHUP}) {
        if (tessary.state() == QProcess::NotRunning) {
            QFile(stale).open(QIODevice::WriteOnly);
            launch();
            EXPECT_FALSE(QFile::exists(stale)) << "a start removes what a killed instance left mid-write";
        }
        const QByteArray text = "copied before signal " + QByteArray::number(signal);
        copyText(text);
        QTest::qWait(300);
        ::kill(pid_t(tessary.processId()), signal);
        ASSERT_TRUE(tessary.waitForFinished(10000)) << signal;
        EXPECT_EQ(tessary.exitStatus(), QProcess::NormalExit) << signal;
        EXPECT_EQ(tessary.exitCode(), 0) << signal;
        EXPECT_TRUE(history().contains(QString::fromLatin1(text))) << signal;
    }
}

} // namespace

namespace {

// The settings window, brought forward by a second start; its X id.
quint64 openSettings(const std::function<int(const QStringList &)> &startAgain)
{
    if (startAgain({}) != 0)
        return 0;
    quint64 window = 0;
    const bool shown = QTest::qWaitFor([&] {
        window = xdotool({QStringLiteral("search"), QStringLiteral("--name"), QStringLiteral("^Tessary Settings$")})
                     .toULongLong();
        return window != 0 && xdotool({QStringLiteral("getactivewindow")}).toULongLong() == window;
    });
    return shown ? window : 0;
}

// Keys typed into the settings window, as xdotool names them. The window
// opens with the keyboard on its tab bar: Ctrl+Tab goes to the next tab, Tab
// to the next control, Space presses it. No positions: fonts may move things.
void type(const QStringList &keys)
{
    xdotool(QStringList{QStringLiteral("key"), QStringLiteral("--delay"), QStringLiteral("80")} + keys);
    QTest::qWait(300);
}

TEST_F(Tessary, aSecondStartBringsTheSettingsWindowForwardWithTheKeyboard)
{
    const quint64 window = openSettings([this](const QStringList &arguments) { return startAgain(arguments); });
    ASSERT_NE(window, 0u);
    EXPECT_EQ(xdotool({QStringLiteral("getactivewindow")}).toULongLong(), window);
    EXPECT_EQ(outerFrame(window)->width(), 680 + 2);
}

TEST_F(Tessary, aRecordedShortcutReplacesTheOldOneAtOnce)
{
    const quint64 settings = openSettings([this](const QStringList &arguments) { return startAgain(arguments); });
    ASSERT_NE(settings, 0u);
    // Windows tab; past "Snap when dragging…", "Reset shortcuts" and the gap
    // slider to the first row's recorder, "Left half".
    type({QStringLiteral("ctrl+Tab"), QStringLiteral("Tab"), QStringLiteral("Tab"), QStringLiteral("Tab"),
        QStringLiteral("Tab"), QStringLiteral("space")});
    xdotool({QStringLiteral("key"), QStringLiteral("ctrl+alt+y")});
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return fileText(QStringLiteral(".config/Tessary/Tessary.conf")).contains(QLatin1String("leftHalf")); }));

    QProcess xterm;
    xterm.start(QStringLiteral("xterm"), {QStringLiteral("-title"), QStringLiteral("tessary-e2e-record")});
    const quint64 window = xdotool({QStringLiteral("search"), QStringLiteral("--sync"), QStringLiteral("--name"),
                                       QStringLiteral("tessary-e2e-record")})
                               .toULongLong();
    ASSERT_NE(window, 0u);
    ASSERT_TRUE(QTest::qWaitFor([&] { return xdotool({QStringLiteral("getactivewindow")}).toULongLong() == window; }));
    const std::optional<QRect> before = outerFrame(window);
    xdotool({QStringLiteral("key"), QStringLiteral("ctrl+alt+Left")});
    QTest::qWait(1000);
    EXPECT_EQ(outerFrame(window), before);
    EXPECT_FALSE(log().contains(QLatin1String("shortcut fired: leftHalf")));

    xdotool({QStringLiteral("key"), QStringLiteral("ctrl+alt+y")});
    EXPECT_TRUE(QTest::qWaitFor([&] {
        const std::optional<QRect> frame = outerFrame(window);
        return frame && frame->topLeft() == QPoint(0, 0) && frame->width() > 940 && frame->width() <= 960;
    }));
    EXPECT_TRUE(log().contains(QLatin1String("shortcut fired: leftHalf")));
    xterm.kill();
    xterm.waitForFinished();
}

TEST_F(Tessary, openingAtLoginWritesAndRemovesAnAutostartEntry)
{
    const quint64 settings = openSettings([this](const QStringList &arguments) { return startAgain(arguments); });
    ASSERT_NE(settings, 0u);
    const QString entry = QStringLiteral(".config/autostart/tessary.desktop");
    type({QStringLiteral("Tab"), QStringLiteral("space")});
    ASSERT_TRUE(QTest::qWaitFor([&] { return !fileText(entry).isEmpty(); }));
    const QString exec = fileText(entry).section(QLatin1String("\nExec="), 1).section(QLatin1Char('\n'), 0, 0);
    EXPECT_TRUE(exec == QLatin1String("tessary")
        || exec == QLatin1Char('"') + QFileInfo(QStringLiteral(TESSARY_BINARY)).canonicalFilePath() + QLatin1Char('"'))
        << exec.toStdString();

    type({QStringLiteral("space")});
    EXPECT_TRUE(QTest::qWaitFor([&] { return !QFile::exists(home.filePath(entry)); }));
}

} // namespace

// The launcher of the built tessary in the test X session, driven with
// xdotool and observed with xdotool, xwininfo, xclip and the files it leaves.
#include "desktop_clients.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRect>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <optional>

namespace {

using tessary::DesktopClients::run;
using tessary::DesktopClients::xdotool;

// A window's place on the screen as xwininfo reports it (no frame: panels have none).
std::optional<QRect> geometry(const QString &window)
{
    const QString info = run(QStringLiteral("xwininfo"), {QStringLiteral("-id"), window});
    const auto number = [&](const char *label) {
        const QRegularExpressionMatch match
            = QRegularExpression(QLatin1String(label) + QStringLiteral(R"(:\s+(-?\d+))")).match(info);
        return match.hasMatch() ? match.captured(1).toInt() : -1;
    };
    if (!info.contains(QLatin1String("IsViewable")))
        return std::nullopt;
    return QRect(number("Absolute upper-left X"), number("Absolute upper-left Y"), number("Width"), number("Height"));
}

class Launcher : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(home.isValid());
        // An application only this test has, which leaves a mark when started.
        const QString applications = home.filePath(QStringLiteral(".local/share/applications"));
        ASSERT_TRUE(QDir().mkpath(applications));
        QFile entry(applications + QStringLiteral("/zyxprobe.desktop"));
        ASSERT_TRUE(entry.open(QIODevice::WriteOnly));
        entry.write("[Desktop Entry]\nType=Application\nName=Zyxprobe\nExec=touch " + started().toUtf8() + "\n");
        entry.close();

        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), home.path());
        for (const char *name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME"})
            environment.remove(QString::fromLatin1(name));
        environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("tessary.app.info=true"));
        tessary.setProcessEnvironment(environment);
        tessary.setProcessChannelMode(QProcess::ForwardedOutputChannel);
        tessary.start(QStringLiteral(TESSARY_BINARY), {});
        ASSERT_TRUE(tessary.waitForStarted());
        ASSERT_TRUE(QTest::qWaitFor([&] { return readyText().contains(QLatin1String("ready at")); }, 20000));
        // The start-up toast is a window of ours too; let it go first.
        QTest::qWait(200);
    }

    void TearDown() override
    {
        xterm.kill();
        xterm.waitForFinished();
        tessary.terminate();
        if (!tessary.waitForFinished(5000))
            tessary.kill();
    }

    QString readyText()
    {
        m_stderr += QString::fromLocal8Bit(tessary.readAllStandardError());
        return m_stderr;
    }

    QString started() const { return home.filePath(QStringLiteral("zyxprobe-started")); }
    QString typedIntoXterm() const { return home.filePath(QStringLiteral("xterm-typed")); }

    // An xterm that writes every key it receives to a file, active.
    void startXterm()
    {
        const QString title = QStringLiteral("tessary-launcher-xterm");
        xterm.start(QStringLiteral("xterm"),
            {QStringLiteral("-title"), title, QStringLiteral("-e"), QStringLiteral("sh"), QStringLiteral("-c"),
                QStringLiteral("stty raw -echo; cat > '%1'").arg(typedIntoXterm())});
        const QString window
            = xdotool({QStringLiteral("search"), QStringLiteral("--sync"), QStringLiteral("--name"), title});
        ASSERT_FALSE(window.isEmpty());
        xdotool({QStringLiteral("windowactivate"), window});
        ASSERT_TRUE(QTest::qWaitFor([&] { return xdotool({QStringLiteral("getactivewindow")}) == window; }));
        ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(typedIntoXterm()); }));
        m_xtermWindow = window;
    }

    // The shown launcher panel, if any: tessary's viewable window 680 wide.
    std::optional<QRect> panel()
    {
        const QStringList windows = xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                                QStringLiteral("--class"), QStringLiteral("tessary")})
                                        .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        for (const QString &window : windows) {
            if (const auto frame = geometry(window); frame && frame->width() == 680)
                return frame;
        }
        return std::nullopt;
    }

    bool waitForPanel(bool shown)
    {
        return QTest::qWaitFor([&] { return panel().has_value() == shown; }, 5000);
    }

    QTemporaryDir home;
    QProcess tessary;
    QProcess xterm;
    QString m_xtermWindow;

private:
    QString m_stderr;
};

TEST_F(Launcher, keysTypedRightAfterTheHotKeyReachTheQueryAndNoneTheXterm)
{
    startXterm();
    // No pause anywhere: the keys follow the hot key as fast as XTest sends them.
    xdotool({QStringLiteral("key"), QStringLiteral("--delay"), QStringLiteral("0"), QStringLiteral("ctrl+alt+space"),
        QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("0"), QStringLiteral("zyxprobe")});
    // `type` takes every later argument as text: Return follows from a second run, still without a pause.
    xdotool({QStringLiteral("key"), QStringLiteral("Return")});
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(started()); }, 5000)) << "the application did not start";
    EXPECT_TRUE(waitForPanel(false));
    QTest::qWait(200);
    QFile typed(typedIntoXterm());
    ASSERT_TRUE(typed.open(QIODevice::ReadOnly));
    EXPECT_EQ(typed.readAll(), QByteArray()) << "keys reached the xterm";
}

TEST_F(Launcher, aCalculationGoesOnTheClipboard)
{
    xdotool({QStringLiteral("key"), QStringLiteral("ctrl+alt+space"), QStringLiteral("type"), QStringLiteral("12*7")});
    xdotool({QStringLiteral("key"), QStringLiteral("Return")});
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            return run(QStringLiteral("xclip"),
                       {QStringLiteral("-o"), QStringLiteral("-selection"), QStringLiteral("clipboard")})
                == QLatin1String("84");
        },
        5000));
}

TEST_F(Launcher, escapeAClickOutsideAndTheHotKeyAgainCloseIt)
{
    startXterm();
    const QStringList closers[] = {
        {QStringLiteral("key"), QStringLiteral("Escape")},
        {QStringLiteral("mousemove"), QStringLiteral("--window"), m_xtermWindow, QStringLiteral("5"),
            QStringLiteral("5"), QStringLiteral("click"), QStringLiteral("1")},
        // The bare desktop, which takes no focus.
        {QStringLiteral("mousemove"), QStringLiteral("1900"), QStringLiteral("1060"), QStringLiteral("click"),
            QStringLiteral("1")},
        {QStringLiteral("key"), QStringLiteral("ctrl+alt+space")},
    };
    for (const QStringList &closer : closers) {
        xdotool({QStringLiteral("mousemove"), QStringLiteral("960"), QStringLiteral("900")});
        xdotool({QStringLiteral("key"), QStringLiteral("ctrl+alt+space")});
        ASSERT_TRUE(waitForPanel(true)) << closer.join(QLatin1Char(' ')).toStdString();
        // A click inside keeps it.
        const QPoint inside = panel()->center();
        xdotool({QStringLiteral("mousemove"), QString::number(inside.x()), QString::number(inside.y()),
            QStringLiteral("click"), QStringLiteral("1")});
        QTest::qWait(100);
        ASSERT_TRUE(panel());
        xdotool(closer);
        EXPECT_TRUE(waitForPanel(false)) << closer.join(QLatin1Char(' ')).toStdString();
    }
}

TEST_F(Launcher, opensOnThePointersMonitorAndGrowsDownwardsByRow)
{
    // The right monitor: 1440x900 at x 1920; no docks, so usable = whole.
    xdotool({QStringLiteral("mousemove"), QStringLiteral("2500"), QStringLiteral("500")});
    xdotool({QStringLiteral("key"), QStringLiteral("ctrl+alt+space")});
    ASSERT_TRUE(waitForPanel(true));
    EXPECT_EQ(panel(), QRect(1920 + (1440 - 680) / 2, 900 / 5, 680, 66)) << "no rows yet";
    xdotool({QStringLiteral("type"), QStringLiteral("zyxprobe")});
    // The application and the web search fallback.
    EXPECT_TRUE(QTest::qWaitFor([&] { return panel() == QRect(2300, 180, 680, 66 + 12 + 2 * 50); }, 5000))
        << (panel() ? panel()->height() : -1);
}

} // namespace

#include "platform/x11/app/paste_keystroke.h"
#include "platform/x11/app/x11_keystroke_sender.h"
#include "platform/x11/x11_connection.h"

#include "desktop_clients.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

#include <optional>

namespace tessary {
namespace {

TEST(PasteKeystroke, terminalsGetTheirOwnPasteKey)
{
    const struct {
        const char *instance;
        const char *className;
        PasteKeystroke keystroke;
    } cases[] = {
        {"xterm", "XTerm", PasteKeystroke::shiftInsertPrimary},
        {"some-name", "UXTerm", PasteKeystroke::shiftInsertPrimary},
        {"urxvt", "URxvt", PasteKeystroke::shiftInsertPrimary},
        {"gnome-terminal-server", "Gnome-terminal", PasteKeystroke::controlShiftV},
        {"konsole", "konsole", PasteKeystroke::controlShiftV},
        {"Alacritty", "Alacritty", PasteKeystroke::controlShiftV},
        {"st-256color", "st-256color", PasteKeystroke::controlShiftV},
        {"kitty", "kitty", PasteKeystroke::controlShiftV},
        {"gedit", "Gedit", PasteKeystroke::controlV},
        {"xtermish", "Editor", PasteKeystroke::controlV},
        {"", "", PasteKeystroke::controlV},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(pasteKeystrokeFor(QString::fromLatin1(c.instance), QString::fromLatin1(c.className)), c.keystroke)
            << c.instance << " / " << c.className;
    }
}

using DesktopClients::run;
using DesktopClients::xdotool;

// A client window of the test session, found by its unique title.
class Client {
public:
    Client(const QString &program, QStringList arguments, const QString &name)
    {
        m_process.start(program, arguments);
        const QString id
            = xdotool({QStringLiteral("search"), QStringLiteral("--sync"), QStringLiteral("--name"), name});
        window = id.section(QLatin1Char('\n'), 0, 0).toULong();
    }
    ~Client()
    {
        m_process.kill();
        m_process.waitForFinished(3000);
    }
    QByteArray output() { return m_process.readAllStandardOutput(); }
    void kill()
    {
        m_process.kill();
        m_process.waitForFinished(3000);
    }

    quint64 window = 0;

private:
    QProcess m_process;
};

class KeystrokeSenderTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        m_x11 = X11Connection::instance();
        if (!m_x11)
            GTEST_SKIP() << "needs the xcb platform";
        sender = std::make_unique<X11KeystrokeSender>(*m_x11);
    }

    static bool waitForActive(quint64 window)
    {
        return QTest::qWaitFor([&] { return xdotool({QStringLiteral("getactivewindow")}).toULong() == window; });
    }

    // Our own window takes the keyboard, as a panel would.
    void takeKeyboard()
    {
        panel.show();
        panel.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&panel));
    }

    std::optional<bool> paste()
    {
        std::optional<bool> outcome;
        sender->sendPaste([&](bool posted) { outcome = posted; });
        (void)QTest::qWaitFor([&] { return outcome.has_value(); }, X11KeystrokeSender::focusTimeoutMs + 2000);
        return outcome;
    }

    X11Connection *m_x11 = nullptr;
    std::unique_ptr<X11KeystrokeSender> sender;
    QWidget panel;
};

TEST_F(KeystrokeSenderTest, xtermGetsTheClipboardBackAfterOurPanelHadTheKeyboard)
{
    QTemporaryDir dir;
    const QString out = dir.filePath(QStringLiteral("pasted"));
    Client xterm(QStringLiteral("xterm"),
        {QStringLiteral("-title"), QStringLiteral("tessary-paste-xterm"), QStringLiteral("-e"), QStringLiteral("sh"),
            QStringLiteral("-c"), QStringLiteral("stty raw -echo; head -c 11 > '%1'").arg(out)},
        QStringLiteral("tessary-paste-xterm"));
    ASSERT_NE(xterm.window, 0u);
    ASSERT_TRUE(waitForActive(xterm.window));
    run(QStringLiteral("xclip"), {QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-i")},
        "from tessary");

    sender->rememberTarget();
    takeKeyboard();
    // Our own window is never remembered: the xterm stays the target.
    sender->rememberTarget();

    EXPECT_EQ(paste(), true);
    EXPECT_TRUE(waitForActive(xterm.window));
    QFile pasted(out);
    EXPECT_TRUE(QTest::qWaitFor([&] { return pasted.size() >= 11; }, 5000));
    ASSERT_TRUE(pasted.open(QIODevice::ReadOnly));
    EXPECT_EQ(pasted.readAll(), QByteArray("from tessar"));
}

TEST_F(KeystrokeSenderTest, otherWindowsGetControlVWithoutTheModifiersTheUserHolds)
{
    Client xev(QStringLiteral("xev"),
        {QStringLiteral("-name"), QStringLiteral("tessary-paste-xev"), QStringLiteral("-event"),
            QStringLiteral("keyboard")},
        QStringLiteral("tessary-paste-xev"));
    ASSERT_NE(xev.window, 0u);
    ASSERT_TRUE(waitForActive(xev.window));
    sender->rememberTarget();
    takeKeyboard();

    xdotool({QStringLiteral("keydown"), QStringLiteral("shift+alt")});
    const std::optional<bool> posted = paste();
    xdotool({QStringLiteral("keyup"), QStringLiteral("shift+alt")});
    EXPECT_EQ(posted, true);

    QString log;
    const QRegularExpression pressOfV(
        QStringLiteral(R"(KeyPress event[^\n]*\n[^\n]*\n\s*state 0x([0-9a-f]+), keycode \d+ \(keysym 0x76, v\))"));
    QRegularExpressionMatch match;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            log += QString::fromLocal8Bit(xev.output());
            match = pressOfV.match(log);
            return match.hasMatch();
        },
        5000))
        << log.toStdString();
    // Control alone: the held Shift and Alt were released first.
    EXPECT_EQ(match.captured(1), QStringLiteral("4")) << log.toStdString();
}

TEST_F(KeystrokeSenderTest, aTargetThatIsGoneGetsNoKeystroke)
{
    Client xev(QStringLiteral("xev"), {QStringLiteral("-name"), QStringLiteral("tessary-paste-gone")},
        QStringLiteral("tessary-paste-gone"));
    ASSERT_TRUE(waitForActive(xev.window));
    sender->rememberTarget();
    takeKeyboard();
    xev.kill();
    EXPECT_EQ(paste(), false);
}

} // namespace
} // namespace tessary

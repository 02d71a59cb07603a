// The clipboard popup of the built tessary in the test X session, driven and
// observed only through xdotool, xclip, xterm and the history file.
#include "desktop_clients.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace {

using tessary::DesktopClients::run;
using tessary::DesktopClients::xdotool;
void keys(const QString &sequence) { xdotool(QStringList{QStringLiteral("key")} + sequence.split(QLatin1Char(' '))); }

QString clipboardText()
{
    return run(
        QStringLiteral("xclip"), {QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-o")});
}

// Only the popup is 580 × 440 in the test session.
bool popupHasTheKeyboard()
{
    return xdotool({QStringLiteral("getwindowfocus"), QStringLiteral("getwindowgeometry")})
        .contains(QLatin1String("Geometry: 580x440"));
}

class ClipboardPopup : public ::testing::Test {
protected:
    void TearDown() override
    {
        for (QProcess *process : {&m_tessary, &m_xterm}) {
            process->terminate();
            if (!process->waitForFinished(5000))
                process->kill();
        }
    }

    void start(const QStringList &arguments = {})
    {
        ASSERT_TRUE(m_home.isValid());
        m_environment = QProcessEnvironment::systemEnvironment();
        m_environment.insert(QStringLiteral("HOME"), m_home.path());
        for (const char *name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME"})
            m_environment.remove(QString::fromLatin1(name));
        m_environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("tessary.app.info=true"));
        m_tessary.setProcessEnvironment(m_environment);
        m_tessary.start(QStringLiteral(TESSARY_BINARY), arguments);
        ASSERT_TRUE(m_tessary.waitForStarted());
        ASSERT_TRUE(QTest::qWaitFor([&] { return stderrText().contains(QLatin1String("ready at")); }, 20000));
    }

    QString stderrText()
    {
        m_stderr += QString::fromLocal8Bit(m_tessary.readAllStandardError());
        return m_stderr;
    }

    QJsonArray history() const
    {
        QFile file(m_home.filePath(QStringLiteral(".local/share/Tessary/clipboard.json")));
        return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).array() : QJsonArray();
    }

    // Copies each text with xclip and waits until the history has it.
    void copy(const QStringList &texts)
    {
        for (const QString &text : texts) {
            run(QStringLiteral("xclip"),
                {QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-i")}, text.toUtf8());
            ASSERT_TRUE(QTest::qWaitFor(
                [&] { return !history().isEmpty() && history().first()[QLatin1String("text")] == text; }, 3000))
                << text.toStdString();
        }
    }

    // An xterm with the keyboard that writes what it receives to `m_pasted`.
    void openXterm()
    {
        m_xterm.start(QStringLiteral("xterm"),
            {QStringLiteral("-title"), QStringLiteral("tessary-popup-xterm"), QStringLiteral("-e"),
                QStringLiteral("sh"), QStringLiteral("-c"),
                QStringLiteral("stty raw -echo; cat > '%1'").arg(m_pasted)});
        const QString window = xdotool({QStringLiteral("search"), QStringLiteral("--sync"), QStringLiteral("--name"),
            QStringLiteral("tessary-popup-xterm")});
        ASSERT_FALSE(window.isEmpty());
        ASSERT_TRUE(QTest::qWaitFor([&] { return xdotool({QStringLiteral("getactivewindow")}) == window; }));
    }
    QByteArray pasted() const
    {
        QFile file(m_pasted);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void openPopup()
    {
        keys(QStringLiteral("ctrl+alt+v"));
        ASSERT_TRUE(QTest::qWaitFor(popupHasTheKeyboard, 3000));
    }

    QTemporaryDir m_home;
    QProcessEnvironment m_environment;
    QProcess m_tessary;
    QProcess m_xterm;
    QString m_pasted = m_home.filePath(QStringLiteral("pasted"));
    QString m_stderr;
};

TEST_F(ClipboardPopup, pastesTheChosenEntryIntoTheXtermOrOnlyCopiesIt)
{
    start();
    openXterm();
    copy({QStringLiteral("alpha one"), QStringLiteral("bravo two"), QStringLiteral("charlie three")});

    openPopup();
    keys(QStringLiteral("Down shift+Return"));
    EXPECT_TRUE(QTest::qWaitFor([] { return clipboardText() == QLatin1String("bravo two"); }, 3000));
    EXPECT_FALSE(popupHasTheKeyboard());
    QTest::qWait(600);
    EXPECT_EQ(pasted(), QByteArray()) << "copy only sends no paste keystroke";

    openPopup();
    keys(QStringLiteral("Down Return"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return pasted() == "bravo two"; }, 5000)) << pasted().toStdString();
}

TEST_F(ClipboardPopup, filtersPinsAndClosesFromTheKeyboard)
{
    start();
    copy({QStringLiteral("alpha one"), QStringLiteral("bravo two"), QStringLiteral("charlie three")});

    openPopup();
    xdotool({QStringLiteral("type"), QStringLiteral("alp")});
    keys(QStringLiteral("shift+Return"));
    EXPECT_TRUE(QTest::qWaitFor([] { return clipboardText() == QLatin1String("alpha one"); }, 3000));

    openPopup();
    keys(QStringLiteral("Down ctrl+p"));
    const auto pinnedText = [&] {
        for (const QJsonValue &item : history()) {
            if (item[QLatin1String("pinned")].toBool())
                return item[QLatin1String("text")].toString();
        }
        return QString();
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return pinnedText() == QLatin1String("bravo two"); }, 3000));
    keys(QStringLiteral("Escape"));
    EXPECT_TRUE(QTest::qWaitFor([] { return !popupHasTheKeyboard(); }, 3000));
}

TEST_F(ClipboardPopup, opensAboutASecondAfterStartAndWhenARunningInstanceIsAsked)
{
    start({QStringLiteral("--show"), QStringLiteral("clipboard")});
    EXPECT_FALSE(popupHasTheKeyboard()) << "not yet when start-up is done";
    EXPECT_TRUE(QTest::qWaitFor(popupHasTheKeyboard, 3000));
    keys(QStringLiteral("Escape"));
    ASSERT_TRUE(QTest::qWaitFor([] { return !popupHasTheKeyboard(); }, 3000));

    QProcess second;
    second.setProcessEnvironment(m_environment);
    second.start(QStringLiteral(TESSARY_BINARY), {QStringLiteral("--show"), QStringLiteral("clipboard")});
    ASSERT_TRUE(second.waitForFinished(20000));
    EXPECT_TRUE(QTest::qWaitFor(popupHasTheKeyboard, 3000));
}

} // namespace

// `tessary --selftest --json` as a user runs it: the built binary with a fresh
// home in the test X session (and, for one case, a bare X server).
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>

#include <cstdlib>

namespace {

struct Report {
    int exitCode = -1;
    QHash<QString, QJsonObject> checks;
    QString out;
};

// Any client may give up a selection for its owner.
void setClipboardOwner(xcb_window_t owner)
{
    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    const QByteArray name("CLIPBOARD");
    auto *atom = xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 0, uint16_t(name.size()), name.constData()), nullptr);
    if (atom)
        xcb_set_selection_owner(connection, owner, atom->atom, XCB_CURRENT_TIME);
    std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    std::free(atom);
    xcb_disconnect(connection);
}

class SelfCheck : public ::testing::Test {
protected:
    // Earlier tests on this session may have left a copy behind.
    void SetUp() override { setClipboardOwner(XCB_WINDOW_NONE); }

    Report run(const QString &display = qEnvironmentVariable("DISPLAY"))
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), m_home.path());
        environment.insert(QStringLiteral("DISPLAY"), display);
        for (const char *name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME"})
            environment.remove(QString::fromLatin1(name));
        QProcess tessary;
        tessary.setProcessEnvironment(environment);
        tessary.start(QStringLiteral(TESSARY_BINARY), {QStringLiteral("--selftest"), QStringLiteral("--json")});
        EXPECT_TRUE(tessary.waitForFinished(60000));
        Report report;
        report.exitCode = tessary.exitCode();
        report.out = QString::fromUtf8(tessary.readAllStandardOutput());
        const QJsonArray checks
            = QJsonDocument::fromJson(report.out.toUtf8()).object().value(QLatin1String("checks")).toArray();
        for (const QJsonValue &check : checks)
            report.checks.insert(check[QLatin1String("name")].toString(), check.toObject());
        EXPECT_FALSE(report.checks.isEmpty())
            << report.out.toStdString() << tessary.readAllStandardError().toStdString();
        return report;
    }

    QString path(const QString &relative) const { return m_home.filePath(relative); }

    QTemporaryDir m_home;
};

// A tray host owns the tray selection of screen 0.
bool trayHostRuns()
{
    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    const QByteArray name("_NET_SYSTEM_TRAY_S0");
    auto *atom = xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 0, uint16_t(name.size()), name.constData()), nullptr);
    auto *owner = atom
        ? xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, atom->atom), nullptr)
        : nullptr;
    const bool owned = owner && owner->owner != XCB_WINDOW_NONE;
    std::free(owner);
    std::free(atom);
    xcb_disconnect(connection);
    return owned;
}

QString status(const Report &report, const char *check)
{
    return report.checks.value(QLatin1String(check)).value(QLatin1String("status")).toString();
}

QString finding(const Report &report, const char *check)
{
    return report.checks.value(QLatin1String(check)).value(QLatin1String("finding")).toString();
}

TEST_F(SelfCheck, aHealthySessionWithATrayPassesAndNothingIsWritten)
{
    QProcess tray;
    tray.start(QStringLiteral("trayer"), {QStringLiteral("--edge"), QStringLiteral("bottom")});
    ASSERT_TRUE(tray.waitForStarted());
    ASSERT_TRUE(QTest::qWaitFor(trayHostRuns, 5000));

    const Report report = run();
    tray.terminate();
    tray.waitForFinished();
    EXPECT_EQ(report.exitCode, 0) << report.out.toStdString();
    for (auto it = report.checks.cbegin(); it != report.checks.cend(); ++it) {
        EXPECT_EQ(it->value(QLatin1String("status")).toString(), QStringLiteral("pass"))
            << it.key().toStdString() << ": " << it->value(QLatin1String("finding")).toString().toStdString();
    }
    EXPECT_FALSE(QFileInfo::exists(path(QStringLiteral(".local/state/Tessary")))) << "a log was written";
    EXPECT_FALSE(QFileInfo::exists(path(QStringLiteral(".local/share/Tessary")))) << "a data folder was created";
    EXPECT_FALSE(QFileInfo::exists(path(QStringLiteral(".config/Tessary")))) << "settings were written";
}

TEST_F(SelfCheck, withoutAWindowManagerTheWindowManagerCheckFails)
{
    // The server picks a free display and writes its number to standard output.
    QProcess server;
    server.start(QStringLiteral("Xvfb"),
        {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-nolisten"), QStringLiteral("tcp")});
    ASSERT_TRUE(server.waitForStarted());
    ASSERT_TRUE(QTest::qWaitFor([&] { return server.canReadLine(); }, 5000));
    const QString display = QLatin1Char(':') + QString::fromLatin1(server.readLine().trimmed());

    const Report report = run(display);
    server.terminate();
    server.waitForFinished();
    EXPECT_EQ(report.exitCode, 1);
    EXPECT_EQ(status(report, "Window manager"), QStringLiteral("failure"));
    EXPECT_TRUE(finding(report, "Window manager").startsWith(QLatin1String("No window manager is running")))
        << finding(report, "Window manager").toStdString();
    EXPECT_EQ(status(report, "X display and monitors"), QStringLiteral("pass"));
}

TEST_F(SelfCheck, aCombinationAnotherClientHoldsIsNamedWithItsAction)
{
    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    ASSERT_EQ(xcb_connection_has_error(connection), 0);
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    xcb_key_symbols_t *symbols = xcb_key_symbols_alloc(connection);
    xcb_keycode_t *left = xcb_key_symbols_get_keycode(symbols, 0xff51);
    ASSERT_TRUE(left && left[0] != XCB_NO_SYMBOL);
    xcb_grab_key(
        connection, 0, root, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1, left[0], XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));

    const Report report = run();
    std::free(left);
    xcb_key_symbols_free(symbols);
    xcb_disconnect(connection);
    EXPECT_EQ(report.exitCode, 1);
    EXPECT_EQ(status(report, "Shortcuts"), QStringLiteral("failure"));
    EXPECT_TRUE(finding(report, "Shortcuts")
                    .contains(QLatin1String("taken by another application: Left half (Ctrl+Alt+Left).")))
        << finding(report, "Shortcuts").toStdString();
}

TEST_F(SelfCheck, theSessionEndingOptionOnTheRestoreCombinationFails)
{
    const auto setOptions = [](const QStringList &options) {
        return QProcess::execute(
            QStringLiteral("setxkbmap"), QStringList{QStringLiteral("-option"), QString()} + options);
    };
    ASSERT_EQ(setOptions({QStringLiteral("-option"), QStringLiteral("terminate:ctrl_alt_bksp")}), 0);
    const Report report = run();
    // The test session starts without options.
    setOptions({});
    EXPECT_EQ(status(report, "Ctrl+Alt+Backspace"), QStringLiteral("failure"));
    EXPECT_TRUE(finding(report, "Ctrl+Alt+Backspace").contains(QLatin1String("terminate:ctrl_alt_bksp")));
}

TEST_F(SelfCheck, aRunningTessaryKeepsItsShortcutsAndDoesNotRecordTheRoundTrip)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), m_home.path());
    environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("tessary.app.info=true"));
    QProcess running;
    running.setProcessEnvironment(environment);
    running.start(QStringLiteral(TESSARY_BINARY), {});
    QByteArray log;
    ASSERT_TRUE(QTest::qWaitFor([&] { return (log += running.readAllStandardError()).contains("ready at"); }, 20000));

    const Report report = run();
    QTest::qWait(1000); // past the running instance's next clipboard poll
    running.terminate();
    if (!running.waitForFinished(5000))
        running.kill();
    running.waitForFinished();
    EXPECT_EQ(status(report, "Shortcuts"), QStringLiteral("pass"));
    EXPECT_TRUE(finding(report, "Shortcuts").startsWith(QLatin1String("Tessary is running")));
    EXPECT_EQ(status(report, "Clipboard"), QStringLiteral("pass"));
    QFile history(path(QStringLiteral(".local/share/Tessary/clipboard.json")));
    const QByteArray recorded = history.open(QIODevice::ReadOnly) ? history.readAll() : QByteArray();
    EXPECT_FALSE(recorded.contains("self-check")) << recorded.constData();
}

TEST_F(SelfCheck, anotherApplicationsCopyIsLeftAloneWithoutAClipboardManager)
{
    QProcess copy;
    copy.start(QStringLiteral("xclip"), {QStringLiteral("-selection"), QStringLiteral("clipboard")});
    copy.write("the user's copy");
    copy.closeWriteChannel();
    // xclip stays in the background as the owner once it has the selection.
    ASSERT_TRUE(copy.waitForFinished(5000));

    const Report report = run();
    EXPECT_EQ(status(report, "Clipboard"), QStringLiteral("warning"));
    QProcess paste;
    paste.start(
        QStringLiteral("xclip"), {QStringLiteral("-o"), QStringLiteral("-selection"), QStringLiteral("clipboard")});
    ASSERT_TRUE(paste.waitForFinished(5000));
    EXPECT_EQ(paste.readAllStandardOutput(), QByteArray("the user's copy"));
    setClipboardOwner(XCB_WINDOW_NONE);
}

TEST_F(SelfCheck, aCorruptHistoryIsReportedAndLeftAsItWas)
{
    const QString folder = path(QStringLiteral(".local/share/Tessary"));
    ASSERT_TRUE(QDir().mkpath(folder));
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QFile history(folder + QStringLiteral("/clipboard.json"));
    const QByteArray corrupt("[{\"id\": \"not a clip\"");
    ASSERT_TRUE(history.open(QIODevice::WriteOnly));
    history.write(corrupt);
    history.close();
    history.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    const QDateTime modified = QFileInfo(history).lastModified();

    const Report report = run();
    EXPECT_EQ(report.exitCode, 1);
    EXPECT_EQ(status(report, "Data folder"), QStringLiteral("failure"));
    EXPECT_TRUE(finding(report, "Data folder").contains(QLatin1String("clipboard.json cannot be read")))
        << finding(report, "Data folder").toStdString();
    ASSERT_TRUE(history.open(QIODevice::ReadOnly));
    EXPECT_EQ(history.readAll(), corrupt);
    EXPECT_EQ(QFileInfo(history).lastModified(), modified);
}

} // namespace

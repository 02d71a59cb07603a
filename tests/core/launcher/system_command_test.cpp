#include "core/launcher/system_command.h"

#include "platform/fake/launcher/fake_session_control.h"
#include "platform/fake/launcher/recording_process_launcher.h"

#include <QSet>

#include <gtest/gtest.h>

namespace tessary {
namespace {

using namespace Qt::StringLiterals;
using Call = RecordingProcessLauncher::Call;

struct Row {
    QString id;
    QString title;
    QStringList keywords;
    QString symbol;
    std::optional<QString> macQuestion;
    std::optional<QString> linuxQuestion;
};

const QList<Row> &expectedRows()
{
    static const QList<Row> rows{
        {u"sleep"_s, u"Sleep"_s, {u"sleep"_s, u"suspend"_s}, u"moon.zzz"_s, {}, {}},
        {u"displaysleep"_s, u"Lock Screen (sleep display)"_s, {u"lock"_s, u"display"_s, u"screen"_s}, u"lock"_s, {},
            {}},
        {u"screensaver"_s, u"Start Screen Saver"_s, {u"screensaver"_s, u"screen saver"_s}, u"sparkles.tv"_s, {}, {}},
        {u"darkmode"_s, u"Toggle Dark Mode"_s, {u"dark"_s, u"light"_s, u"appearance"_s, u"theme"_s},
            u"circle.lefthalf.filled"_s, {}, {}},
        {u"emptytrash"_s, u"Empty Trash"_s, {u"trash"_s, u"empty"_s, u"bin"_s}, u"trash"_s,
            u"Permanently empty the Trash?"_s, u"Permanently empty the Trash?"_s},
        {u"eject"_s, u"Eject All Disks"_s, {u"eject"_s, u"unmount"_s, u"disk"_s}, u"eject"_s, {}, {}},
        {u"settings"_s, u"Open System Settings"_s, {u"preferences"_s}, u"gearshape"_s, {}, {}},
        {u"logout"_s, u"Log Out"_s, {u"logout"_s, u"log out"_s, u"sign out"_s}, u"rectangle.portrait.and.arrow.right"_s,
            u"Log out of your account?"_s, u"Log out of your account?"_s},
        {u"restart"_s, u"Restart"_s, {u"restart"_s, u"reboot"_s}, u"arrow.clockwise"_s, u"Restart your Mac?"_s,
            u"Restart your computer?"_s},
        {u"shutdown"_s, u"Shut Down"_s, {u"shutdown"_s, u"shut down"_s, u"power off"_s}, u"power"_s,
            u"Shut down your Mac?"_s, u"Shut down your computer?"_s},
    };
    return rows;
}

void expectRows(const QList<SystemCommand> &commands, bool mac)
{
    ASSERT_EQ(commands.size(), expectedRows().size());
    for (qsizetype i = 0; i < commands.size(); ++i) {
        const SystemCommand &command = commands[i];
        const Row &row = expectedRows()[i];
        SCOPED_TRACE(row.id.toStdString());
        EXPECT_EQ(command.id, row.id);
        EXPECT_EQ(command.title, row.title);
        EXPECT_EQ(command.keywords, row.keywords);
        EXPECT_EQ(command.symbol, row.symbol);
        EXPECT_EQ(command.confirm, mac ? row.macQuestion : row.linuxQuestion);
    }
}

TEST(SystemCommand, bothPlatformsOfferTheSameCommandsInTheSameOrder)
{
    expectRows(SystemCommand::macTable(), true);
    FakeSessionControl session;
    expectRows(SystemCommand::sessionTable(session, {}), false);
}

struct RunCase {
    QString id;
    QList<Call> calls;
};

QList<Call> runOf(const QList<SystemCommand> &commands, const QString &id)
{
    RecordingProcessLauncher launcher;
    for (const SystemCommand &command : commands) {
        if (command.id == id)
            command.run(launcher);
    }
    return launcher.calls();
}

Call started(const QString &program, const QStringList &arguments) { return {Call::Kind::start, program, arguments}; }

TEST(SystemCommand, macCommandsStartTheirProgramsWithExactArguments)
{
    const QString osascript = u"/usr/bin/osascript"_s;
    const RunCase cases[] = {
        {u"sleep"_s, {started(u"/usr/bin/pmset"_s, {u"sleepnow"_s})}},
        {u"displaysleep"_s, {started(u"/usr/bin/pmset"_s, {u"displaysleepnow"_s})}},
        {u"screensaver"_s, {started(u"/usr/bin/open"_s, {u"-a"_s, u"ScreenSaverEngine"_s})}},
        {u"darkmode"_s,
            {started(osascript,
                {u"-e"_s,
                    u"tell application \"System Events\" to tell appearance preferences to set dark mode to not dark "
                    u"mode"_s})}},
        {u"emptytrash"_s, {started(osascript, {u"-e"_s, u"tell application \"Finder\" to empty trash"_s})}},
        {u"eject"_s,
            {started(
                osascript, {u"-e"_s, u"tell application \"Finder\" to eject (every disk whose ejectable is true)"_s})}},
        {u"settings"_s, {started(u"/usr/bin/open"_s, {u"-a"_s, u"System Settings"_s})}},
        {u"logout"_s, {started(osascript, {u"-e"_s, u"tell application \"System Events\" to log out"_s})}},
        {u"restart"_s, {started(osascript, {u"-e"_s, u"tell application \"System Events\" to restart"_s})}},
        {u"shutdown"_s, {started(osascript, {u"-e"_s, u"tell application \"System Events\" to shut down"_s})}},
    };
    const QList<SystemCommand> commands = SystemCommand::macTable();
    for (const RunCase &c : cases)
        EXPECT_EQ(runOf(commands, c.id), c.calls) << c.id.toStdString();
}

TEST(SystemCommand, sessionCommandsPerformTheirActionAndReportFailures)
{
    using Action = SessionControl::Action;
    const QList<Action> actions{Action::sleep, Action::lock, Action::screenSaver, Action::darkMode, Action::emptyTrash,
        Action::eject, Action::settings, Action::logout, Action::restart, Action::shutdown};
    FakeSessionControl session;
    QStringList reported;
    const QList<SystemCommand> commands
        = SystemCommand::sessionTable(session, [&reported](const QString &message) { reported.append(message); });
    ASSERT_EQ(commands.size(), actions.size());
    RecordingProcessLauncher launcher;
    for (qsizetype i = 0; i < commands.size(); ++i) {
        const SystemCommand &command = commands[i];
        SCOPED_TRACE(command.id.toStdString());
        EXPECT_FALSE(command.offered());
        session.offered.insert(actions[i]);
        EXPECT_TRUE(command.offered());

        command.run(launcher);
        EXPECT_EQ(session.performed.last(), actions[i]);
        session.finish(true);
        EXPECT_TRUE(reported.isEmpty());
        command.run(launcher);
        session.finish(false);
        ASSERT_EQ(reported.size(), 1);
        EXPECT_FALSE(reported.takeFirst().isEmpty()) << "every failure has its message";
    }
    EXPECT_TRUE(launcher.calls().isEmpty());
}

} // namespace
} // namespace tessary

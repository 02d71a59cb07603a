#include "core/launcher/system_command.h"

namespace tessary {

namespace {

using namespace Qt::StringLiterals;
using Action = SessionControl::Action;

struct Definition {
    QString id;
    QString title;
    QStringList keywords;
    QString symbol;
    std::optional<QString> macQuestion;
    std::optional<QString> linuxQuestion;
    QString macProgram;
    QStringList macArguments;
    Action action;
    QString failure;
};

const QList<Definition> &definitions()
{
    const QString osascript = u"/usr/bin/osascript"_s;
    static const QList<Definition> table{
        {u"sleep"_s, u"Sleep"_s, {u"sleep"_s, u"suspend"_s}, u"moon.zzz"_s, {}, {}, u"/usr/bin/pmset"_s,
            {u"sleepnow"_s}, Action::sleep, u"The computer could not go to sleep."_s},
        {u"displaysleep"_s, u"Lock Screen (sleep display)"_s, {u"lock"_s, u"display"_s, u"screen"_s}, u"lock"_s, {}, {},
            u"/usr/bin/pmset"_s, {u"displaysleepnow"_s}, Action::lock, u"The screen could not be locked."_s},
        {u"screensaver"_s, u"Start Screen Saver"_s, {u"screensaver"_s, u"screen saver"_s}, u"sparkles.tv"_s, {}, {},
            u"/usr/bin/open"_s, {u"-a"_s, u"ScreenSaverEngine"_s}, Action::screenSaver,
            u"The screen saver could not be started."_s},
        {u"darkmode"_s, u"Toggle Dark Mode"_s, {u"dark"_s, u"light"_s, u"appearance"_s, u"theme"_s},
            u"circle.lefthalf.filled"_s, {}, {}, osascript,
            {u"-e"_s,
                u"tell application \"System Events\" to tell appearance preferences to set dark mode "
                u"to not dark mode"_s},
            Action::darkMode, u"The appearance could not be changed."_s},
        {u"emptytrash"_s, u"Empty Trash"_s, {u"trash"_s, u"empty"_s, u"bin"_s}, u"trash"_s,
            u"Permanently empty the Trash?"_s, u"Permanently empty the Trash?"_s, osascript,
            {u"-e"_s, u"tell application \"Finder\" to empty trash"_s}, Action::emptyTrash,
            u"The Trash could not be emptied completely."_s},
        {u"eject"_s, u"Eject All Disks"_s, {u"eject"_s, u"unmount"_s, u"disk"_s}, u"eject"_s, {}, {}, osascript,
            {u"-e"_s, u"tell application \"Finder\" to eject (every disk whose ejectable is true)"_s}, Action::eject,
            u"A disk could not be ejected."_s},
        {u"settings"_s, u"Open System Settings"_s, {u"preferences"_s}, u"gearshape"_s, {}, {}, u"/usr/bin/open"_s,
            {u"-a"_s, u"System Settings"_s}, Action::settings, u"The settings could not be opened."_s},
        {u"logout"_s, u"Log Out"_s, {u"logout"_s, u"log out"_s, u"sign out"_s}, u"rectangle.portrait.and.arrow.right"_s,
            u"Log out of your account?"_s, u"Log out of your account?"_s, osascript,
            {u"-e"_s, u"tell application \"System Events\" to log out"_s}, Action::logout, u"Could not log out."_s},
        {u"restart"_s, u"Restart"_s, {u"restart"_s, u"reboot"_s}, u"arrow.clockwise"_s, u"Restart your Mac?"_s,
            u"Restart your computer?"_s, osascript, {u"-e"_s, u"tell application \"System Events\" to restart"_s},
            Action::restart, u"The computer could not be restarted."_s},
        {u"shutdown"_s, u"Shut Down"_s, {u"shutdown"_s, u"shut down"_s, u"power off"_s}, u"power"_s,
            u"Shut down your Mac?"_s, u"Shut down your computer?"_s, osascript,
            {u"-e"_s, u"tell application \"System Events\" to shut down"_s}, Action::shutdown,
            u"The computer could not be shut down."_s},
    };
    return table;
}

} // namespace

QList<SystemCommand> SystemCommand::macTable()
{
    QList<SystemCommand> commands;
    for (const Definition &definition : definitions()) {
        commands.append(
            {definition.id, definition.title, definition.keywords, definition.symbol, definition.macQuestion,
                [program = definition.macProgram, arguments = definition.macArguments](
                    ProcessLauncher &launcher) { launcher.start(program, arguments); },
                {}});
    }
    return commands;
}

QList<SystemCommand> SystemCommand::sessionTable(
    SessionControl &session, std::function<void(const QString &message)> report)
{
    QList<SystemCommand> commands;
    for (const Definition &definition : definitions()) {
        const Action action = definition.action;
        auto run = [&session, action, report, failure = definition.failure](ProcessLauncher &) {
            session.perform(action, [report, failure](bool ok) {
                if (!ok && report)
                    report(failure);
            });
        };
        commands.append({definition.id, definition.title, definition.keywords, definition.symbol,
            definition.linuxQuestion, std::move(run), [&session, action] { return session.offers(action); }});
    }
    return commands;
}

} // namespace tessary

#include "core/launcher/system_command.h"

#include <QStandardPaths>

namespace tessary {

namespace {

using namespace Qt::StringLiterals;

// A program and what to do with it once its path is known.
struct Program {
    QString name;
    std::function<void(ProcessLauncher &, const QString &path)> run;
};

Program starting(QString name, QStringList arguments)
{
    return {std::move(name),
        [arguments](ProcessLauncher &launcher, const QString &path) { launcher.start(path, arguments); }};
}

// GNOME and the desktops built on its settings have no toggle: read, then set the opposite.
void toggleColorScheme(ProcessLauncher &launcher, const QString &gsettings)
{
    const QStringList key{u"org.gnome.desktop.interface"_s, u"color-scheme"_s};
    const auto current = launcher.output(gsettings, QStringList{u"get"_s} + key);
    if (!current)
        return;
    const bool dark = current->trimmed() == "'prefer-dark'";
    launcher.start(gsettings, QStringList{u"set"_s} + key + QStringList{dark ? u"default"_s : u"prefer-dark"_s});
}

struct Definition {
    QString id;
    QString title;
    QStringList keywords;
    QString symbol;
    std::optional<QString> macQuestion;
    std::optional<QString> linuxQuestion;
    Program mac;
    // The first one installed is used.
    QList<Program> linuxPrograms;
};

const QList<Definition> &definitions()
{
    static const QList<Definition> table{
        {u"sleep"_s, u"Sleep"_s, {u"sleep"_s, u"suspend"_s}, u"moon.zzz"_s, {}, {},
            starting(u"/usr/bin/pmset"_s, {u"sleepnow"_s}), {starting(u"systemctl"_s, {u"suspend"_s})}},
        {u"displaysleep"_s, u"Lock Screen (sleep display)"_s, {u"lock"_s, u"display"_s, u"screen"_s}, u"lock"_s, {}, {},
            starting(u"/usr/bin/pmset"_s, {u"displaysleepnow"_s}), {starting(u"loginctl"_s, {u"lock-session"_s})}},
        {u"screensaver"_s, u"Start Screen Saver"_s, {u"screensaver"_s, u"screen saver"_s}, u"sparkles.tv"_s, {}, {},
            starting(u"/usr/bin/open"_s, {u"-a"_s, u"ScreenSaverEngine"_s}),
            {starting(u"xdg-screensaver"_s, {u"activate"_s}), starting(u"xset"_s, {u"s"_s, u"activate"_s})}},
        {u"darkmode"_s, u"Toggle Dark Mode"_s, {u"dark"_s, u"light"_s, u"appearance"_s, u"theme"_s},
            u"circle.lefthalf.filled"_s, {}, {},
            starting(u"/usr/bin/osascript"_s,
                {u"-e"_s,
                    u"tell application \"System Events\" to tell appearance preferences to set dark mode "
                    u"to not dark mode"_s}),
            {{u"gsettings"_s, toggleColorScheme}}},
        {u"emptytrash"_s, u"Empty Trash"_s, {u"trash"_s, u"empty"_s, u"bin"_s}, u"trash"_s,
            u"Permanently empty the Trash?"_s, u"Permanently empty the Trash?"_s,
            starting(u"/usr/bin/osascript"_s, {u"-e"_s, u"tell application \"Finder\" to empty trash"_s}),
            {starting(u"gio"_s, {u"trash"_s, u"--empty"_s})}},
        {u"eject"_s, u"Eject All Disks"_s, {u"eject"_s, u"unmount"_s, u"disk"_s}, u"eject"_s, {}, {},
            starting(u"/usr/bin/osascript"_s,
                {u"-e"_s, u"tell application \"Finder\" to eject (every disk whose ejectable is true)"_s}),
            // Every user-visible local mount: removable drives, not the system's own file systems.
            {starting(u"gio"_s, {u"mount"_s, u"--unmount-scheme"_s, u"file"_s})}},
        {u"settings"_s, u"Open System Settings"_s, {u"preferences"_s}, u"gearshape"_s, {}, {},
            starting(u"/usr/bin/open"_s, {u"-a"_s, u"System Settings"_s}),
            {starting(u"gnome-control-center"_s, {}), starting(u"systemsettings"_s, {}),
                starting(u"xfce4-settings-manager"_s, {}), starting(u"cinnamon-settings"_s, {}),
                starting(u"mate-control-center"_s, {}), starting(u"lxqt-config"_s, {})}},
        {u"logout"_s, u"Log Out"_s, {u"logout"_s, u"log out"_s, u"sign out"_s}, u"rectangle.portrait.and.arrow.right"_s,
            u"Log out of your account?"_s, u"Log out of your account?"_s,
            starting(u"/usr/bin/osascript"_s, {u"-e"_s, u"tell application \"System Events\" to log out"_s}),
            // An empty session id names the caller's own session.
            {starting(u"loginctl"_s, {u"terminate-session"_s, QString()})}},
        {u"restart"_s, u"Restart"_s, {u"restart"_s, u"reboot"_s}, u"arrow.clockwise"_s, u"Restart your Mac?"_s,
            u"Restart your computer?"_s,
            starting(u"/usr/bin/osascript"_s, {u"-e"_s, u"tell application \"System Events\" to restart"_s}),
            {starting(u"systemctl"_s, {u"reboot"_s})}},
        {u"shutdown"_s, u"Shut Down"_s, {u"shutdown"_s, u"shut down"_s, u"power off"_s}, u"power"_s,
            u"Shut down your Mac?"_s, u"Shut down your computer?"_s,
            starting(u"/usr/bin/osascript"_s, {u"-e"_s, u"tell application \"System Events\" to shut down"_s}),
            {starting(u"systemctl"_s, {u"poweroff"_s})}},
    };
    return table;
}

std::function<void(ProcessLauncher &)> bound(const Program &program, const QString &path)
{
    return [run = program.run, path](ProcessLauncher &launcher) { run(launcher, path); };
}

} // namespace

QList<SystemCommand> SystemCommand::macTable()
{
    QList<SystemCommand> commands;
    for (const Definition &definition : definitions()) {
        commands.append({definition.id, definition.title, definition.keywords, definition.symbol,
            definition.macQuestion, bound(definition.mac, definition.mac.name)});
    }
    return commands;
}

QList<SystemCommand> SystemCommand::linuxTable(const ExecutableLookup &findExecutable)
{
    QList<SystemCommand> commands;
    for (const Definition &definition : definitions()) {
        for (const Program &program : definition.linuxPrograms) {
            const QString path = findExecutable(program.name);
            if (path.isEmpty())
                continue;
            commands.append({definition.id, definition.title, definition.keywords, definition.symbol,
                definition.linuxQuestion, bound(program, path)});
            break;
        }
    }
    return commands;
}

const QList<SystemCommand> &SystemCommand::all()
{
#ifdef Q_OS_MACOS
    static const QList<SystemCommand> commands = macTable();
#else
    static const QList<SystemCommand> commands
        = linuxTable([](const QString &name) { return QStandardPaths::findExecutable(name); });
#endif
    return commands;
}

} // namespace tessary

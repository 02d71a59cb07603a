#include "platform/x11/launcher/session/desktop_session_control.h"

#include "core/launcher/background_task.h"
#include "core/platform/process_launcher.h"
#include "platform/x11/launcher/session/dbus_call.h"
#include "platform/x11/launcher/session/freedesktop_trash.h"
#include "platform/x11/launcher/session/removable_drives.h"

#include <QStandardPaths>

#include <array>

namespace tessary {

namespace {

using Action = SessionControl::Action;

struct Method {
    QString name;
    QVariantList arguments = {};
};

struct ScreenSaver {
    QLatin1String service;
    QLatin1String path;
    QLatin1String interface;
};

// The first one on the bus is the session's.
constexpr std::array<ScreenSaver, 5> screenSavers{{
    {QLatin1String("org.gnome.ScreenSaver"), QLatin1String("/org/gnome/ScreenSaver"),
        QLatin1String("org.gnome.ScreenSaver")},
    {QLatin1String("org.mate.ScreenSaver"), QLatin1String("/org/mate/ScreenSaver"),
        QLatin1String("org.mate.ScreenSaver")},
    {QLatin1String("org.cinnamon.ScreenSaver"), QLatin1String("/org/cinnamon/ScreenSaver"),
        QLatin1String("org.cinnamon.ScreenSaver")},
    {QLatin1String("org.xfce.ScreenSaver"), QLatin1String("/org/xfce/ScreenSaver"),
        QLatin1String("org.xfce.ScreenSaver")},
    {QLatin1String("org.freedesktop.ScreenSaver"), QLatin1String("/ScreenSaver"),
        QLatin1String("org.freedesktop.ScreenSaver")},
}};

constexpr QLatin1String logind("org.freedesktop.login1");

DBusCall logindCall(const QString &method, QVariantList arguments)
{
    return {logind, QStringLiteral("/org/freedesktop/login1"), QStringLiteral("org.freedesktop.login1.Manager"), method,
        std::move(arguments)};
}

DBusCall busCall(const QString &method)
{
    return {QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), method};
}

} // namespace

struct DesktopSessionControl::SessionManager {
    DesktopFamily family;
    QString service;
    QString path;
    QString interface;
    Method logout;
    Method restart;
    Method shutdown;

    DBusCall call(Action action) const
    {
        const Method &method = action == Action::logout ? logout : action == Action::restart ? restart : shutdown;
        return {service, path, interface, method.name, method.arguments};
    }
};

DesktopSessionControl::Environment DesktopSessionControl::Environment::current()
{
    const QString dataHome = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return {desktopFamily(qEnvironmentVariable("XDG_CURRENT_DESKTOP")), qEnvironmentVariable("XDG_SESSION_ID"),
        [dataHome] { return FreedesktopTrash::trashFolders(dataHome); }, QDBusConnection::sessionBus(),
        QDBusConnection::systemBus()};
}

DesktopSessionControl::DesktopSessionControl(Environment environment, ProcessLauncher &processes, QObject *parent)
    : QObject(parent)
    , m_environment(std::move(environment))
    , m_processes(processes)
    , m_darkMode(m_environment.family, m_environment.sessionBus)
    , m_settingsProgram(QStandardPaths::findExecutable(settingsProgram(m_environment.family)))
{
    probe();
}

const DesktopSessionControl::SessionManager *DesktopSessionControl::sessionManager() const
{
    // Logout without its own confirmation (1), apps may still save or inhibit.
    static const std::array<SessionManager, 5> managers{{
        {DesktopFamily::gnome, QStringLiteral("org.gnome.SessionManager"), QStringLiteral("/org/gnome/SessionManager"),
            QStringLiteral("org.gnome.SessionManager"), {QStringLiteral("Logout"), {QVariant::fromValue(1u)}},
            {QStringLiteral("Reboot")}, {QStringLiteral("Shutdown")}},
        {DesktopFamily::mate, QStringLiteral("org.gnome.SessionManager"), QStringLiteral("/org/gnome/SessionManager"),
            QStringLiteral("org.gnome.SessionManager"), {QStringLiteral("Logout"), {QVariant::fromValue(1u)}},
            {QStringLiteral("RequestReboot")}, {QStringLiteral("RequestShutdown")}},
        {DesktopFamily::kde, QStringLiteral("org.kde.Shutdown"), QStringLiteral("/Shutdown"),
            QStringLiteral("org.kde.Shutdown"), {QStringLiteral("logout")}, {QStringLiteral("logoutAndReboot")},
            {QStringLiteral("logoutAndShutdown")}},
        // Logout(show dialog, allow save); Restart and Shutdown(allow save).
        {DesktopFamily::xfce, QStringLiteral("org.xfce.SessionManager"), QStringLiteral("/org/xfce/SessionManager"),
            QStringLiteral("org.xfce.Session.Manager"), {QStringLiteral("Logout"), {false, true}},
            {QStringLiteral("Restart"), {true}}, {QStringLiteral("Shutdown"), {true}}},
        {DesktopFamily::lxqt, QStringLiteral("org.lxqt.session"), QStringLiteral("/LXQtSession"),
            QStringLiteral("org.lxqt.session"), {QStringLiteral("logout")}, {QStringLiteral("reboot")},
            {QStringLiteral("powerOff")}},
    }};
    for (const SessionManager &manager : managers) {
        const bool forThisDesktop
            = manager.family == m_environment.family || m_environment.family == DesktopFamily::other;
        if (forThisDesktop && m_sessionNames.contains(manager.service))
            return &manager;
    }
    return nullptr;
}

int DesktopSessionControl::screenSaverIndex() const
{
    for (size_t i = 0; i < screenSavers.size(); ++i) {
        if (m_sessionNames.contains(screenSavers[i].service))
            return static_cast<int>(i);
    }
    return -1;
}

void DesktopSessionControl::probe()
{
    const auto names = [this](const QDBusConnection &bus, QSet<QString> *into) {
        for (const QString &method : {QStringLiteral("ListNames"), QStringLiteral("ListActivatableNames")}) {
            ++m_pendingProbes;
            busCall(method).send(bus, this, [this, into](const QDBusMessage &reply) {
                if (succeeded(reply) && !reply.arguments().isEmpty()) {
                    const QStringList list = reply.arguments().constFirst().toStringList();
                    into->unite(QSet<QString>(list.begin(), list.end()));
                }
                onProbed();
            });
        }
    };
    names(m_environment.sessionBus, &m_sessionNames);
    names(m_environment.systemBus, &m_systemNames);
    const std::pair<Action, QString> questions[] = {{Action::sleep, QStringLiteral("CanSuspend")},
        {Action::restart, QStringLiteral("CanReboot")}, {Action::shutdown, QStringLiteral("CanPowerOff")}};
    for (const auto &question : questions) {
        const Action action = question.first;
        const QString &method = question.second;
        ++m_pendingProbes;
        logindCall(method, {}).send(m_environment.systemBus, this, [this, action](const QDBusMessage &reply) {
            const QString answer = succeeded(reply) && !reply.arguments().isEmpty()
                ? reply.arguments().constFirst().toString()
                : QString();
            if (answer == QLatin1String("yes") || answer == QLatin1String("challenge"))
                m_logindCan.insert(action);
            onProbed();
        });
    }
}

void DesktopSessionControl::onProbed()
{
    if (--m_pendingProbes == 0)
        Q_EMIT probed();
}

bool DesktopSessionControl::offers(Action action) const
{
    switch (action) {
    case Action::sleep:
        return m_logindCan.contains(Action::sleep);
    case Action::lock:
    case Action::screenSaver:
        return screenSaverIndex() >= 0;
    case Action::darkMode:
        return m_darkMode.available(m_sessionNames.contains(DarkModeSwitch::xfconfService));
    case Action::emptyTrash:
        return true;
    case Action::eject:
        return m_systemNames.contains(RemovableDrives::service);
    case Action::settings:
        return !m_settingsProgram.isEmpty();
    case Action::logout:
        return sessionManager() || (!m_environment.sessionId.isEmpty() && m_systemNames.contains(logind));
    case Action::restart:
    case Action::shutdown:
        return sessionManager() || m_logindCan.contains(action);
    }
    return false;
}

void DesktopSessionControl::perform(Action action, std::function<void(bool ok)> done)
{
    const auto replied = [done](const QDBusMessage &reply) { done(succeeded(reply)); };
    switch (action) {
    case Action::sleep:
        logindCall(QStringLiteral("Suspend"), {true}).send(m_environment.systemBus, this, replied);
        return;
    case Action::lock:
    case Action::screenSaver: {
        const int index = screenSaverIndex();
        if (index < 0) {
            done(false);
            return;
        }
        const ScreenSaver &saver = screenSavers[static_cast<size_t>(index)];
        const DBusCall call = action == Action::lock
            ? DBusCall{saver.service, saver.path, saver.interface, QStringLiteral("Lock")}
            : DBusCall{saver.service, saver.path, saver.interface, QStringLiteral("SetActive"), {true}};
        call.send(m_environment.sessionBus, this, replied);
        return;
    }
    case Action::darkMode:
        m_darkMode.toggle(this, std::move(done));
        return;
    case Action::emptyTrash:
        emptyTrash(std::move(done));
        return;
    case Action::eject:
        RemovableDrives::ejectAll(m_environment.systemBus, this, std::move(done));
        return;
    case Action::settings:
        done(!m_settingsProgram.isEmpty() && m_processes.start(m_settingsProgram, {}));
        return;
    case Action::logout:
    case Action::restart:
    case Action::shutdown:
        endSession(action, std::move(done));
        return;
    }
}

void DesktopSessionControl::endSession(Action action, std::function<void(bool)> done)
{
    const auto replied = [done](const QDBusMessage &reply) { done(succeeded(reply)); };
    if (const SessionManager *manager = sessionManager()) {
        manager->call(action).send(m_environment.sessionBus, this, replied);
        return;
    }
    // logind ends the session or the machine at once: nothing is asked to save.
    const DBusCall call = action == Action::logout
        ? logindCall(QStringLiteral("TerminateSession"), {m_environment.sessionId})
        : logindCall(action == Action::restart ? QStringLiteral("Reboot") : QStringLiteral("PowerOff"), {true});
    call.send(m_environment.systemBus, this, replied);
}

void DesktopSessionControl::emptyTrash(std::function<void(bool)> done)
{
    runInBackground(
        this, [folders = m_environment.trashFolders] { return FreedesktopTrash::empty(folders()); }, std::move(done));
}

} // namespace tessary

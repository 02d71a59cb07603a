#pragma once

#include "core/platform/session_control.h"
#include "platform/x11/launcher/session/dark_mode_switch.h"
#include "platform/x11/launcher/session/desktop_family.h"

#include <QDBusConnection>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>

namespace tessary {

class ProcessLauncher;

// Session actions over the desktop's own D-Bus services: log out, restart
// and shut down through its session manager (GNOME, KDE, Xfce, LXQt, MATE)
// so applications can save, else through logind; sleep through logind; lock
// and the screen saver through the session's screen saver; dark mode per
// desktop; the Trash by the freedesktop.org layout; eject through UDisks2; the
// desktop's own settings program. What is offered is learnt at construction
// from the names on both buses, without waiting for them.
class DesktopSessionControl final : public QObject, public SessionControl {
    Q_OBJECT

public:
    struct Environment {
        DesktopFamily family;
        // XDG_SESSION_ID: the session logind ends when there is no session manager.
        QString sessionId;
        // The trash folders to empty; called on a worker thread.
        std::function<QStringList()> trashFolders;
        QDBusConnection sessionBus;
        QDBusConnection systemBus;

        static Environment current();
    };

    DesktopSessionControl(Environment environment, ProcessLauncher &processes, QObject *parent = nullptr);

    bool offers(Action action) const override;
    void perform(Action action, std::function<void(bool ok)> done) override;

Q_SIGNALS:
    // Once the buses have said which services they have.
    void probed();

private:
    struct SessionManager;

    void probe();
    void onProbed();
    const SessionManager *sessionManager() const;
    // The first screen saver service on the session bus, as an index into the table; -1 for none.
    int screenSaverIndex() const;
    void endSession(Action action, std::function<void(bool)> done);
    void emptyTrash(std::function<void(bool)> done);

    Environment m_environment;
    ProcessLauncher &m_processes;
    DarkModeSwitch m_darkMode;
    QString m_settingsProgram;
    QSet<QString> m_sessionNames;
    QSet<QString> m_systemNames;
    // What logind answered "yes" or "challenge" to.
    QSet<Action> m_logindCan;
    int m_pendingProbes = 0;
};

} // namespace tessary

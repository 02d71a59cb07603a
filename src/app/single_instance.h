#pragma once

#include "app/instance_lock.h"

#include <QLocalServer>
#include <QObject>
#include <QStringList>

namespace tessary {

// One Tessary per user and display. The instance holds a lock for its whole
// life and listens on a local socket; a later start hands its command-line
// arguments over and exits. Main thread only.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    struct Timeouts {
        int connectMs = 1000;
        int acknowledgeMs = 5000;
        // How long a start waits for an instance that holds the lock but does
        // not listen: one still starting, or one finishing its writes.
        int settleMs = 5000;
    };

    // `serverName`: a socket path, or a name under the temporary folder.
    explicit SingleInstance(QString serverName, Timeouts timeouts, QObject *parent = nullptr);
    explicit SingleInstance(QString serverName, QObject *parent = nullptr);

    // In the user's runtime folder, per home and X display: a test run with
    // its own home and display never meets the user's own instance.
    static QString defaultServerName();

    enum class Claim {
        // This process is now the one instance, listening for later starts.
        claimed,
        // The running instance took the arguments.
        forwarded,
        // An instance runs but took no arguments in time; `holderPid` names it.
        unanswered,
    };
    // Waits at most a few seconds, before the event loop runs. Whatever a dead
    // instance left behind is taken over; while a previous instance still
    // ends, this waits for it, so two never write the same files.
    Claim claimOrForward(const QStringList &arguments);

    // The running instance's process id, 0 when unknown.
    qint64 holderPid() const { return m_lock.holderPid(); }

    // Stops listening: from now on a later start waits until this process
    // has ended (its last writes done) and then takes over.
    void close();

Q_SIGNALS:
    // Arguments forwarded by a later start (the program name left out).
    void forwarded(const QStringList &arguments);

private:
    enum class Delivery { delivered, noServer, unanswered };
    Delivery forward(const QStringList &arguments) const;
    bool listen();
    void onNewConnection();

    QString m_name;
    Timeouts m_timeouts;
    InstanceLock m_lock;
    QLocalServer m_server;
};

} // namespace tessary

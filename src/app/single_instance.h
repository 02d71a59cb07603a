#pragma once

#include <QLocalServer>
#include <QObject>
#include <QStringList>

namespace tessary {

// One Tessary per user and display. The first process listens on a local
// socket; a later one hands its command-line arguments to it and exits.
// Main thread only.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    explicit SingleInstance(QString serverName, QObject *parent = nullptr);

    // Per user home and X display: a test run with its own home and display
    // never meets the user's own instance.
    static QString defaultServerName();

    // True when this process is now the one instance (listening); false when
    // a running instance took `arguments`. A server left behind by a crashed
    // instance is replaced.
    bool claimOrForward(const QStringList &arguments);

    static constexpr int connectTimeoutMs = 1000;
    static constexpr int acknowledgeTimeoutMs = 5000;

Q_SIGNALS:
    // Arguments forwarded by a later start (the program name left out).
    void forwarded(const QStringList &arguments);

private:
    enum class Delivery { delivered, noServer, staleServer };
    Delivery forward(const QStringList &arguments) const;
    void onNewConnection();

    QString m_name;
    QLocalServer m_server;
};

} // namespace tessary

#include "app/single_instance.h"

#include "app/app_logging.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocalSocket>
#include <QPointer>
#include <QThread>

namespace tessary {

namespace {

// Between two looks at an instance that holds the lock but does not listen.
constexpr int settlePollMs = 50;

QString lockPath(const QString &serverName)
{
    const QString socket = QDir::isAbsolutePath(serverName) ? serverName : QDir(QDir::tempPath()).filePath(serverName);
    return socket + QStringLiteral(".lock");
}

} // namespace

SingleInstance::SingleInstance(QString serverName, Timeouts timeouts, QObject *parent)
    : QObject(parent)
    , m_name(std::move(serverName))
    , m_timeouts(timeouts)
    , m_lock(lockPath(m_name))
{
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &SingleInstance::onNewConnection);
}

SingleInstance::SingleInstance(QString serverName, QObject *parent)
    : SingleInstance(std::move(serverName), Timeouts(), parent)
{
}

QString SingleInstance::defaultServerName()
{
    const QByteArray identity = QDir::homePath().toUtf8() + '\n' + qgetenv("DISPLAY");
    const QString name = QStringLiteral("tessary-")
        + QString::fromLatin1(QCryptographicHash::hash(identity, QCryptographicHash::Sha256).toHex().left(16));
    // The runtime folder is the user's own; the temporary folder is shared.
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (QDir::isAbsolutePath(runtime) && QFileInfo(runtime).isDir())
        return QDir(runtime).filePath(name);
    return name;
}

SingleInstance::Delivery SingleInstance::forward(const QStringList &arguments) const
{
    QLocalSocket socket;
    socket.connectToServer(m_name);
    if (!socket.waitForConnected(m_timeouts.connectMs))
        return Delivery::noServer;
    socket.write(QJsonDocument(QJsonArray::fromStringList(arguments)).toJson(QJsonDocument::Compact) + '\n');
    socket.waitForBytesWritten(m_timeouts.connectMs);
    return socket.waitForReadyRead(m_timeouts.acknowledgeMs) ? Delivery::delivered : Delivery::unanswered;
}

SingleInstance::Claim SingleInstance::claimOrForward(const QStringList &arguments)
{
    const QDeadlineTimer settle(m_timeouts.settleMs);
    for (;;) {
        const InstanceLock::State lock = m_lock.tryLock();
        if (lock == InstanceLock::State::acquired) {
            // Only the lock's holder listens, so a socket file found now is a dead instance's.
            QLocalServer::removeServer(m_name);
            listen();
            return Claim::claimed;
        }
        switch (forward(arguments)) {
        case Delivery::delivered:
            return Claim::forwarded;
        case Delivery::unanswered:
            return Claim::unanswered;
        case Delivery::noServer:
            break;
        }
        if (lock == InstanceLock::State::unavailable) {
            // A folder we cannot write to: the socket alone decides.
            qCWarning(lcApp) << "cannot lock" << m_lock.path();
            QLocalServer::removeServer(m_name);
            listen();
            return Claim::claimed;
        }
        if (settle.hasExpired())
            return Claim::unanswered;
        QThread::msleep(settlePollMs);
    }
}

bool SingleInstance::listen()
{
    if (m_server.listen(m_name))
        return true;
    qCWarning(lcApp) << "cannot listen for later starts:" << m_server.errorString();
    return false;
}

void SingleInstance::close() { m_server.close(); }

void SingleInstance::onNewConnection()
{
    while (QLocalSocket *socket = m_server.nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket = QPointer<QLocalSocket>(socket)] {
            if (!socket || !socket->canReadLine())
                return;
            const QJsonDocument message = QJsonDocument::fromJson(socket->readLine());
            // Acknowledged before acting: the action may end this process (Quit).
            socket->write("\n");
            socket->flush();
            socket->disconnectFromServer();
            if (!message.isArray())
                return;
            QStringList arguments;
            const QJsonArray values = message.array();
            for (const QJsonValue &value : values)
                arguments.append(value.toString());
            Q_EMIT forwarded(arguments);
        });
    }
}

} // namespace tessary

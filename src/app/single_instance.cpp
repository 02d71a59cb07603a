#include "app/single_instance.h"

#include "app/app_logging.h"

#include <QCryptographicHash>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocalSocket>
#include <QPointer>

namespace tessary {

SingleInstance::SingleInstance(QString serverName, QObject *parent)
    : QObject(parent)
    , m_name(std::move(serverName))
{
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &SingleInstance::onNewConnection);
}

QString SingleInstance::defaultServerName()
{
    const QByteArray identity = QDir::homePath().toUtf8() + '\n' + qgetenv("DISPLAY");
    return QStringLiteral("tessary-")
        + QString::fromLatin1(QCryptographicHash::hash(identity, QCryptographicHash::Sha256).toHex().left(16));
}

SingleInstance::Delivery SingleInstance::forward(const QStringList &arguments) const
{
    QLocalSocket socket;
    socket.connectToServer(m_name);
    if (!socket.waitForConnected(connectTimeoutMs)) {
        // Refused: a socket file nobody listens on any more.
        return socket.error() == QLocalSocket::ConnectionRefusedError ? Delivery::staleServer : Delivery::noServer;
    }
    socket.write(QJsonDocument(QJsonArray::fromStringList(arguments)).toJson(QJsonDocument::Compact) + '\n');
    socket.waitForBytesWritten(connectTimeoutMs);
    // A live instance took the connection: even when too busy to acknowledge
    // in time it reads the message later, so it is never replaced.
    if (!socket.waitForReadyRead(acknowledgeTimeoutMs))
        qCWarning(lcApp) << "the running instance has not acknowledged yet";
    return Delivery::delivered;
}

bool SingleInstance::claimOrForward(const QStringList &arguments)
{
    for (int attempt = 0; attempt < 2; ++attempt) {
        const Delivery delivery = forward(arguments);
        if (delivery == Delivery::delivered)
            return false;
        if (delivery == Delivery::staleServer)
            QLocalServer::removeServer(m_name);
        if (m_server.listen(m_name))
            return true;
        // Lost a race with another start that began listening a moment ago: hand over to it.
    }
    qCWarning(lcApp) << "cannot listen for later starts:" << m_server.errorString();
    return true;
}

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

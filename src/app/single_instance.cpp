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

bool SingleInstance::forward(const QStringList &arguments) const
{
    QLocalSocket socket;
    socket.connectToServer(m_name);
    if (!socket.waitForConnected(connectTimeoutMs))
        return false;
    socket.write(QJsonDocument(QJsonArray::fromStringList(arguments)).toJson(QJsonDocument::Compact) + '\n');
    if (!socket.waitForBytesWritten(connectTimeoutMs))
        return false;
    // The instance acknowledges once it has read the message.
    return socket.waitForReadyRead(connectTimeoutMs) && socket.read(1) == "\n";
}

bool SingleInstance::claimOrForward(const QStringList &arguments)
{
    if (forward(arguments))
        return false;
    if (m_server.listen(m_name))
        return true;
    if (m_server.serverError() == QAbstractSocket::AddressInUseError) {
        // Either an instance that started a moment ago or a crashed one's socket.
        if (forward(arguments))
            return false;
        QLocalServer::removeServer(m_name);
        if (m_server.listen(m_name))
            return true;
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
            for (const QJsonValue &value : message.array())
                arguments.append(value.toString());
            Q_EMIT forwarded(arguments);
        });
    }
}

} // namespace tessary

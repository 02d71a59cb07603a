#include "private_bus.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QUuid>

namespace tessary {

PrivateBus::PrivateBus(const QProcessEnvironment &environment)
{
    m_daemon.setProcessEnvironment(environment);
    m_daemon.start(QStringLiteral("dbus-daemon"),
        {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--nopidfile"),
            QStringLiteral("--print-address=1")});
    if (!m_daemon.waitForStarted(5000))
        return;
    while (!m_daemon.canReadLine() && m_daemon.waitForReadyRead(5000)) { }
    m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
}

PrivateBus::~PrivateBus()
{
    m_daemon.terminate();
    m_daemon.waitForFinished(5000);
}

QDBusConnection PrivateBus::connect(const QString &name) const
{
    return QDBusConnection::connectToBus(m_address, name);
}

namespace {

QString text(const QVariant &argument)
{
    if (argument.canConvert<QDBusVariant>())
        return text(argument.value<QDBusVariant>().variant());
    // Containers by their type: "a{sv}".
    if (argument.canConvert<QDBusArgument>())
        return argument.value<QDBusArgument>().currentSignature();
    return argument.toString();
}

} // namespace

StandIn::StandIn(const PrivateBus &bus, const QStringList &services, const QStringList &paths)
    : m_name(QUuid::createUuid().toString(QUuid::WithoutBraces))
    , m_connection(std::make_unique<QDBusConnection>(bus.connect(m_name)))
{
    for (const QString &service : services)
        m_connection->registerService(service);
    for (const QString &path : paths)
        m_connection->registerVirtualObject(path, this, QDBusConnection::SubPath);
}

StandIn::~StandIn()
{
    m_connection.reset();
    QDBusConnection::disconnectFromBus(m_name);
}

bool StandIn::handleMessage(const QDBusMessage &message, const QDBusConnection &connection)
{
    QStringList arguments;
    for (const QVariant &argument : message.arguments())
        arguments.append(text(argument));
    calls.append(message.path() + QLatin1Char(' ') + message.interface() + QLatin1Char('.') + message.member()
        + QLatin1Char('(') + arguments.join(QLatin1Char(',')) + QLatin1Char(')'));
    connection.send(message.createReply(replies.value(message.member())));
    return true;
}

} // namespace tessary

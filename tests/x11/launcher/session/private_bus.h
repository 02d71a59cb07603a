#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QHash>
#include <QProcess>
#include <QStringList>
#include <QVariantList>

#include <memory>

namespace tessary {

// A dbus-daemon of its own for one test suite, so stand-in services can take
// the real names without touching the user's session. Services it starts on
// demand inherit `environment`.
class PrivateBus {
public:
    explicit PrivateBus(const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment());
    ~PrivateBus();

    bool isRunning() const { return !m_address.isEmpty(); }
    const QString &address() const { return m_address; }
    // A new connection under `name`.
    QDBusConnection connect(const QString &name) const;

private:
    QProcess m_daemon;
    QString m_address;
};

// Stand-in services: owns the given names on its own connection, answers every
// call below its object paths from `replies` (by method name; empty replies
// otherwise) and records each call as "path interface.Method(arguments)",
// containers written as their D-Bus type.
class StandIn : public QDBusVirtualObject {
public:
    StandIn(const PrivateBus &bus, const QStringList &services, const QStringList &paths);
    ~StandIn() override;

    QStringList calls;
    QHash<QString, QVariantList> replies;

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;
    QString introspect(const QString &) const override { return {}; }

private:
    QString m_name;
    std::unique_ptr<QDBusConnection> m_connection;
};

} // namespace tessary

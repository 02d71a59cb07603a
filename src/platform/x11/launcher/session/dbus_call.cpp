#include "platform/x11/launcher/session/dbus_call.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QMetaObject>

namespace tessary {

void DBusCall::send(
    const QDBusConnection &bus, QObject *context, std::function<void(const QDBusMessage &reply)> done) const
{
    if (!bus.isConnected()) {
        // No pending call, so no watcher would ever report: answer like a failed call.
        QMetaObject::invokeMethod(
            context,
            [done = std::move(done), name = bus.lastError().name()] {
                done(QDBusMessage::createError(QDBusError::Disconnected, name));
            },
            Qt::QueuedConnection);
        return;
    }
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(message), context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context, [watcher, done = std::move(done)] {
        watcher->deleteLater();
        done(watcher->reply());
    });
}

} // namespace tessary

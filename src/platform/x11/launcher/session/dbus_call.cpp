#include "platform/x11/launcher/session/dbus_call.h"

#include <QDBusPendingCallWatcher>

namespace tessary {

void DBusCall::send(
    const QDBusConnection &bus, QObject *context, std::function<void(const QDBusMessage &reply)> done) const
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(message), context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context, [watcher, done = std::move(done)] {
        watcher->deleteLater();
        done(watcher->reply());
    });
}

} // namespace tessary

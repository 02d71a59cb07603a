#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>
#include <QVariantList>

#include <functional>

class QObject;

namespace tessary {

// One method call on a bus service, sent without waiting.
struct DBusCall {
    QString service;
    QString path;
    QString interface;
    QString method;
    QVariantList arguments = {};

    // Sends the call; `done` gets the reply (or the error) later on the main
    // thread, unless `context` is gone by then.
    void send(const QDBusConnection &bus, QObject *context, std::function<void(const QDBusMessage &reply)> done) const;
};

inline bool succeeded(const QDBusMessage &reply) { return reply.type() == QDBusMessage::ReplyMessage; }

} // namespace tessary

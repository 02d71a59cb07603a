#include "platform/x11/launcher/session/removable_drives.h"

#include "platform/x11/launcher/session/dbus_call.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QObject>

#include <memory>

namespace tessary::RemovableDrives {

namespace {

// Object path → interface → property, as the ObjectManager reports them.
using Objects = QMap<QString, QMap<QString, QVariantMap>>;

constexpr QLatin1String driveInterface("org.freedesktop.UDisks2.Drive");
constexpr QLatin1String blockInterface("org.freedesktop.UDisks2.Block");
constexpr QLatin1String filesystemInterface("org.freedesktop.UDisks2.Filesystem");

Objects parse(const QDBusMessage &reply)
{
    Objects objects;
    if (!succeeded(reply) || reply.arguments().isEmpty())
        return objects;
    const auto argument = reply.arguments().constFirst().value<QDBusArgument>();
    argument.beginMap();
    while (!argument.atEnd()) {
        QDBusObjectPath path;
        QMap<QString, QVariantMap> interfaces;
        argument.beginMapEntry();
        argument >> path >> interfaces;
        argument.endMapEntry();
        objects.insert(path.path(), interfaces);
    }
    argument.endMap();
    return objects;
}

QString objectPath(const QVariant &value)
{
    return value.canConvert<QDBusObjectPath>() ? value.value<QDBusObjectPath>().path() : value.toString();
}

bool mounted(const QVariantMap &filesystem)
{
    const QVariant points = filesystem.value(QStringLiteral("MountPoints"));
    if (points.canConvert<QDBusArgument>()) {
        QByteArrayList list;
        points.value<QDBusArgument>() >> list;
        return !list.isEmpty();
    }
    return !points.value<QByteArrayList>().isEmpty();
}

// Counts outstanding calls; reports once, when the last one has answered.
struct Batch {
    int pending = 0;
    bool ok = true;
    std::function<void(bool)> done;
};

void sendAll(const QList<DBusCall> &calls, const QDBusConnection &bus, QObject *context, std::function<void(bool)> done)
{
    if (calls.isEmpty()) {
        done(true);
        return;
    }
    auto batch = std::make_shared<Batch>(Batch{static_cast<int>(calls.size()), true, std::move(done)});
    for (const DBusCall &call : calls) {
        call.send(bus, context, [batch](const QDBusMessage &reply) {
            batch->ok = batch->ok && succeeded(reply);
            if (--batch->pending == 0)
                batch->done(batch->ok);
        });
    }
}

} // namespace

void ejectAll(const QDBusConnection &system, QObject *context, std::function<void(bool ok)> done)
{
    const DBusCall list{service, QStringLiteral("/org/freedesktop/UDisks2"),
        QStringLiteral("org.freedesktop.DBus.ObjectManager"), QStringLiteral("GetManagedObjects")};
    list.send(system, context, [system, context, done = std::move(done)](const QDBusMessage &reply) {
        if (!succeeded(reply)) {
            done(false);
            return;
        }
        const Objects objects = parse(reply);
        const QVariantList noOptions{QVariantMap()};
        QList<DBusCall> unmounts;
        QList<DBusCall> ejects;
        for (auto object = objects.begin(); object != objects.end(); ++object) {
            const QVariantMap drive = object->value(driveInterface);
            if (!object->contains(driveInterface) || !drive.value(QStringLiteral("Removable")).toBool())
                continue;
            for (auto block = objects.begin(); block != objects.end(); ++block) {
                if (block->contains(filesystemInterface) && mounted(block->value(filesystemInterface))
                    && objectPath(block->value(blockInterface).value(QStringLiteral("Drive"))) == object.key())
                    unmounts.append({service, block.key(), filesystemInterface, QStringLiteral("Unmount"), noOptions});
            }
            if (drive.value(QStringLiteral("Ejectable")).toBool())
                ejects.append({service, object.key(), driveInterface, QStringLiteral("Eject"), noOptions});
            else if (drive.value(QStringLiteral("CanPowerOff")).toBool())
                ejects.append({service, object.key(), driveInterface, QStringLiteral("PowerOff"), noOptions});
        }
        // A drive goes only once nothing on it is mounted any more.
        sendAll(unmounts, system, context, [system, context, ejects, done](bool unmounted) {
            if (!unmounted) {
                done(false);
                return;
            }
            sendAll(ejects, system, context, done);
        });
    });
}

} // namespace tessary::RemovableDrives

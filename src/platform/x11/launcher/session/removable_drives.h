#pragma once

#include <QDBusConnection>
#include <QString>

#include <functional>

class QObject;

namespace tessary {

// Ejects the removable drives that UDisks2 knows: unmounts their mounted file
// systems, then ejects the medium (or powers the drive off, for USB sticks).
// Fixed disks are never touched.
namespace RemovableDrives {

inline const QString service = QStringLiteral("org.freedesktop.UDisks2");

// `done(true)` once every step succeeded (also when there was nothing to eject).
void ejectAll(const QDBusConnection &system, QObject *context, std::function<void(bool ok)> done);

} // namespace RemovableDrives

} // namespace tessary

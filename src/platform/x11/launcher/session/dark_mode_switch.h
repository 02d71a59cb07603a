#pragma once

#include "platform/x11/launcher/session/desktop_family.h"

#include <QDBusConnection>
#include <QString>

#include <functional>

class QObject;

namespace tessary {

// Flips between the light and the dark appearance the way each desktop keeps
// it: GNOME's color-scheme setting, KDE's color scheme, Xfce's GTK theme.
class DarkModeSwitch {
public:
    static inline const QString xfconfService = QStringLiteral("org.xfce.Xfconf");

    DarkModeSwitch(DesktopFamily family, QDBusConnection session);

    // Whether this desktop has a switch that does something (for Xfce: when
    // `xfconfRunning`).
    bool available(bool xfconfRunning) const;
    void toggle(QObject *context, std::function<void(bool ok)> done) const;

private:
    void toggleGnome(std::function<void(bool)> done) const;
    void toggleKde(QObject *context, std::function<void(bool)> done) const;
    void toggleXfce(QObject *context, std::function<void(bool)> done) const;

    DesktopFamily m_family;
    QDBusConnection m_session;
    QString m_plasmaApply;
};

} // namespace tessary

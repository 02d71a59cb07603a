#include "platform/x11/launcher/session/desktop_family.h"

#include <QStringList>

namespace tessary {

DesktopFamily desktopFamily(const QString &currentDesktop)
{
    for (const QString &name : currentDesktop.split(QLatin1Char(':'), Qt::SkipEmptyParts)) {
        const QString lower = name.toLower();
        if (lower == QLatin1String("gnome") || lower == QLatin1String("gnome-classic"))
            return DesktopFamily::gnome;
        if (lower == QLatin1String("kde"))
            return DesktopFamily::kde;
        if (lower == QLatin1String("xfce"))
            return DesktopFamily::xfce;
        if (lower == QLatin1String("lxqt"))
            return DesktopFamily::lxqt;
        if (lower == QLatin1String("mate"))
            return DesktopFamily::mate;
    }
    return DesktopFamily::other;
}

QString settingsProgram(DesktopFamily family)
{
    switch (family) {
    case DesktopFamily::gnome:
        return QStringLiteral("gnome-control-center");
    case DesktopFamily::kde:
        return QStringLiteral("systemsettings");
    case DesktopFamily::xfce:
        return QStringLiteral("xfce4-settings-manager");
    case DesktopFamily::lxqt:
        return QStringLiteral("lxqt-config");
    case DesktopFamily::mate:
        return QStringLiteral("mate-control-center");
    case DesktopFamily::other:
        break;
    }
    return {};
}

} // namespace tessary

#include "ui/app_icons.h"

namespace tessary::AppIcons {

namespace {

// One file per size, so that a tray asking for 22 pixels gets a rendering at 22
// rather than a blurred scaling of another size.
QIcon fromSizes(const QString &name, std::initializer_list<int> sizes)
{
    QIcon icon;
    for (int size : sizes)
        icon.addFile(QStringLiteral(":/icons/%1/%2.png").arg(size).arg(name), QSize(size, size));
    return icon;
}

} // namespace

QIcon tray() { return fromSizes(QStringLiteral("tessary-tray"), {16, 22, 24, 32, 48}); }

QIcon application() { return fromSizes(QStringLiteral("org.tessary.Tessary"), {16, 22, 24, 32, 48, 64, 128, 256}); }

} // namespace tessary::AppIcons

#include "ui/row_icons.h"

#include "ui/symbol_icons.h"

#include <QFile>
#include <QFileInfo>

namespace tessary {

namespace {

// Older programs install their icon as a plain file under /usr/share/pixmaps.
QIcon legacyPixmap(const QString &name)
{
    for (const char *suffix : {".png", ".svg", ".xpm"}) {
        const QString file = QStringLiteral("/usr/share/pixmaps/") + name + QLatin1String(suffix);
        if (QFileInfo::exists(file))
            return QIcon(file);
    }
    return {};
}

} // namespace

QString RowIcons::desktopEntryIcon(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    bool inEntry = false;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine().trimmed();
        if (line.startsWith('[')) {
            // Only the main group counts; actions carry icons of their own.
            if (inEntry)
                break;
            inEntry = line == "[Desktop Entry]";
        } else if (inEntry && line.startsWith("Icon")) {
            const qsizetype equals = line.indexOf('=');
            if (equals > 0 && line.left(equals).trimmed() == "Icon")
                return QString::fromUtf8(line.mid(equals + 1).trimmed());
        }
    }
    return {};
}

QIcon RowIcons::icon(const LauncherResult &row)
{
    if (row.iconPath) {
        const QIcon found = forPath(*row.iconPath);
        if (!found.isNull())
            return found;
    }
    if (row.symbol)
        return SymbolIcons::icon(*row.symbol);
    if (row.kind == LauncherResult::Kind::app)
        return QIcon::fromTheme(
            QStringLiteral("application-x-executable"), SymbolIcons::icon(QStringLiteral("gearshape")));
    return SymbolIcons::icon(row.kind == LauncherResult::Kind::file ? QStringLiteral("doc") : QStringLiteral("circle"));
}

QIcon RowIcons::forPath(const QString &path)
{
    const auto cached = m_byPath.constFind(path);
    if (cached != m_byPath.cend())
        return *cached;
    QIcon icon;
    // fromTheme with a null fallback stays null when the theme lacks the name.
    if (path.endsWith(QLatin1String(".desktop"))) {
        const QString name = desktopEntryIcon(path);
        if (QFileInfo(name).isAbsolute())
            icon = QFileInfo::exists(name) ? QIcon(name) : QIcon();
        else if (!name.isEmpty())
            icon = QIcon::fromTheme(name, legacyPixmap(name));
    } else {
        const QMimeType type = m_mime.mimeTypeForFile(path);
        icon = QIcon::fromTheme(type.iconName(), QIcon::fromTheme(type.genericIconName(), QIcon()));
    }
    m_byPath.insert(path, icon);
    return icon;
}

} // namespace tessary

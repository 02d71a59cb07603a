#include "platform/x11/launcher/desktop_entry_catalog.h"

#include <QDir>
#include <QFileInfo>

#include <gio/gdesktopappinfo.h>

namespace tessary {

QStringList DesktopEntryCatalog::defaultRoots() const
{
    const QString applications = QStringLiteral("/applications");
    QStringList roots{QDir::cleanPath(QString::fromUtf8(g_get_user_data_dir()) + applications)};
    for (const gchar *const *dir = g_get_system_data_dirs(); *dir; ++dir)
        roots.append(QDir::cleanPath(QString::fromUtf8(*dir) + applications));
    return roots;
}

QString DesktopEntryCatalog::entrySuffix() const { return QStringLiteral(".desktop"); }

QString DesktopEntryCatalog::entryKey(const QString &root, const QString &path) const
{
    if (!path.startsWith(root + QLatin1Char('/')))
        return QFileInfo(path).fileName();
    return path.mid(root.size() + 1).replace(QLatin1Char('/'), QLatin1Char('-'));
}

std::optional<QString> DesktopEntryCatalog::displayName(const QString &path) const
{
    // Null for unreadable files, other types than Application and a TryExec not found.
    GDesktopAppInfo *info = g_desktop_app_info_new_from_filename(QFile::encodeName(path).constData());
    if (!info)
        return std::nullopt;
    std::optional<QString> name;
    // Hidden=true means "deleted": it shadows the system's entry and shows nothing.
    if (!g_desktop_app_info_get_is_hidden(info) && g_app_info_should_show(G_APP_INFO(info)))
        name = QString::fromUtf8(g_app_info_get_name(G_APP_INFO(info)));
    g_object_unref(info);
    return name;
}

} // namespace tessary

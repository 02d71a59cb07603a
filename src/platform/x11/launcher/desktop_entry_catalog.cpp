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
    // Sessions not started through Flatpak's or snapd's profile scripts lack these.
    const QStringList exports{QString::fromUtf8(g_get_user_data_dir()) + QStringLiteral("/flatpak/exports/share"),
        QStringLiteral("/var/lib/flatpak/exports/share"), QStringLiteral("/var/lib/snapd/desktop")};
    for (const QString &data : exports) {
        const QString root = QDir::cleanPath(data + applications);
        if (!roots.contains(root))
            roots.append(root);
    }
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

QStringList DesktopEntryCatalog::otherNames(const QString &path) const
{
    GDesktopAppInfo *info = g_desktop_app_info_new_from_filename(QFile::encodeName(path).constData());
    if (!info)
        return {};
    QStringList names;
    gchar *untranslated = g_desktop_app_info_get_string(info, "Name");
    if (untranslated && g_strcmp0(untranslated, g_app_info_get_name(G_APP_INFO(info))) != 0)
        names.append(QString::fromUtf8(untranslated));
    g_free(untranslated);
    if (const char *generic = g_desktop_app_info_get_generic_name(info))
        names.append(QString::fromUtf8(generic));
    if (const char *const *keywords = g_desktop_app_info_get_keywords(info)) {
        for (; *keywords; ++keywords)
            names.append(QString::fromUtf8(*keywords));
    }
    g_object_unref(info);
    return names;
}

} // namespace tessary

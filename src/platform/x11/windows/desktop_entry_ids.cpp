#include "platform/x11/windows/desktop_entry_ids.h"

#include <gio/gdesktopappinfo.h>

#include <QList>

namespace tessary {
namespace {

DesktopEntryIds::Entry entryOf(GAppInfo *info)
{
    QString id = QString::fromUtf8(g_app_info_get_id(info));
    if (id.endsWith(QLatin1String(".desktop")))
        id.chop(8);
    return {id, QString::fromUtf8(g_app_info_get_name(info))};
}

} // namespace

std::optional<DesktopEntryIds::Entry> DesktopEntryIds::find(const QByteArray &instance, const QByteArray &className)
{
    const QByteArray key = instance + '\0' + className;
    const auto cached = m_cache.constFind(key);
    if (cached != m_cache.cend())
        return *cached;
    const std::optional<Entry> entry = lookUp(instance, className);
    m_cache.insert(key, entry);
    return entry;
}

std::optional<DesktopEntryIds::Entry> DesktopEntryIds::lookUp(const QByteArray &instance, const QByteArray &className)
{
    QList<QByteArray> names;
    for (const QByteArray &name : {className, className.toLower(), instance, instance.toLower()}) {
        if (!name.isEmpty() && !names.contains(name))
            names.append(name);
    }
    for (const QByteArray &name : names) {
        const QByteArray desktopId = name + ".desktop";
        if (GDesktopAppInfo *info = g_desktop_app_info_new(desktopId.constData())) {
            const Entry entry = entryOf(G_APP_INFO(info));
            g_object_unref(info);
            return entry;
        }
    }
    indexStartupClasses();
    for (const QByteArray &name : {className.toLower(), instance.toLower()}) {
        const auto found = m_byStartupClass->constFind(name);
        if (!name.isEmpty() && found != m_byStartupClass->cend())
            return *found;
    }
    return std::nullopt;
}

void DesktopEntryIds::indexStartupClasses()
{
    if (m_byStartupClass)
        return;
    m_byStartupClass.emplace();
    GList *all = g_app_info_get_all();
    for (GList *item = all; item; item = item->next) {
        auto *info = static_cast<GAppInfo *>(item->data);
        if (!G_IS_DESKTOP_APP_INFO(info))
            continue;
        const char *startupClass = g_desktop_app_info_get_startup_wm_class(G_DESKTOP_APP_INFO(info));
        if (startupClass && *startupClass) {
            const QByteArray key = QByteArray(startupClass).toLower();
            if (!m_byStartupClass->contains(key))
                m_byStartupClass->insert(key, entryOf(info));
        }
    }
    g_list_free_full(all, g_object_unref);
}

} // namespace tessary

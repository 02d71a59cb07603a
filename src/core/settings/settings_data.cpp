#include "core/settings/settings_data.h"

#include "core/json/strict_json.h"

#include <QJsonArray>

#include <limits>

namespace tessary {

namespace {

std::optional<int> int32(const QJsonObject &object, const char *name)
{
    const auto value = StrictJson::integer(object, name);
    if (!value || *value < std::numeric_limits<int>::min() || *value > std::numeric_limits<int>::max())
        return std::nullopt;
    return static_cast<int>(*value);
}

std::optional<QMap<QString, KeyCombo>> shortcutsFrom(const QJsonValue &value)
{
    if (!value.isObject())
        return std::nullopt;
    QMap<QString, KeyCombo> shortcuts;
    const QJsonObject object = value.toObject();
    for (auto it = object.begin(); it != object.end(); ++it) {
        const auto combo = KeyCombo::fromJson(it.value());
        if (!combo)
            return std::nullopt;
        shortcuts.insert(it.key(), *combo);
    }
    return shortcuts;
}

std::optional<QList<WebSearch>> webSearchesFrom(const QJsonValue &value)
{
    if (!value.isArray())
        return std::nullopt;
    QList<WebSearch> searches;
    const QJsonArray items = value.toArray();
    for (const QJsonValue &item : items) {
        const auto search = WebSearch::fromJson(item);
        if (!search)
            return std::nullopt;
        searches.append(*search);
    }
    return searches;
}

} // namespace

QStringList SettingsData::defaultClipboardExcluded()
{
    return {
        QStringLiteral("com.1password.1password"),
        QStringLiteral("com.agilebits.onepassword7"),
        QStringLiteral("com.agilebits.onepassword-osx"),
        QStringLiteral("com.bitwarden.desktop"),
        QStringLiteral("com.lastpass.LastPass"),
        QStringLiteral("com.dashlane.dashlanephonefinal"),
        QStringLiteral("org.keepassxc.keepassxc"),
        QStringLiteral("com.apple.keychainaccess"),
        QStringLiteral("com.apple.Passwords"),
#ifndef Q_OS_MACOS
        // The same password managers as Linux desktop applications know them.
        QStringLiteral("1password"),
        QStringLiteral("bitwarden"),
        QStringLiteral("com.bitwarden.desktop.desktop"),
        QStringLiteral("keepassxc"),
        QStringLiteral("org.keepassxc.KeePassXC"),
        QStringLiteral("org.keepassxc.KeePassXC.desktop"),
        QStringLiteral("keepass2"),
        QStringLiteral("org.gnome.seahorse.Application"),
        QStringLiteral("seahorse"),
        QStringLiteral("org.kde.kwalletmanager5"),
#endif
    };
}

QByteArray SettingsData::toJson() const
{
    QJsonObject shortcutObject;
    for (auto it = shortcuts.cbegin(); it != shortcuts.cend(); ++it)
        shortcutObject.insert(it.key(), it.value().toJson());
    QStringList disabledSorted = disabled.values();
    disabledSorted.sort();
    QJsonArray searches;
    for (const WebSearch &search : webSearches)
        searches.append(search.toJson());

    return StrictJson::compact(QJsonObject{
        {QLatin1String("shortcuts"), shortcutObject},
        {QLatin1String("disabled"), QJsonArray::fromStringList(disabledSorted)},
        {QLatin1String("gap"), gap},
        {QLatin1String("dragSnap"), dragSnap},
        {QLatin1String("clipboardEnabled"), clipboardEnabled},
        {QLatin1String("clipboardMax"), clipboardMax},
        {QLatin1String("clipboardRetentionDays"), clipboardRetentionDays},
        {QLatin1String("clipboardExcluded"), QJsonArray::fromStringList(clipboardExcluded)},
        {QLatin1String("launcherFiles"), launcherFiles},
        {QLatin1String("launcherSystem"), launcherSystem},
        {QLatin1String("webSearches"), searches},
    });
}

std::optional<SettingsData> SettingsData::fromJson(const QByteArray &json)
{
    const auto object = StrictJson::parseObject(json);
    if (!object)
        return std::nullopt;
    const auto shortcuts = shortcutsFrom(object->value(QLatin1String("shortcuts")));
    const auto disabled = StrictJson::stringList(*object, "disabled");
    const auto gap = StrictJson::number(*object, "gap");
    const auto dragSnap = StrictJson::boolean(*object, "dragSnap");
    const auto clipboardEnabled = StrictJson::boolean(*object, "clipboardEnabled");
    const auto clipboardMax = int32(*object, "clipboardMax");
    const auto retention = int32(*object, "clipboardRetentionDays");
    const auto excluded = StrictJson::stringList(*object, "clipboardExcluded");
    const auto launcherFiles = StrictJson::boolean(*object, "launcherFiles");
    const auto launcherSystem = StrictJson::boolean(*object, "launcherSystem");
    const auto webSearches = webSearchesFrom(object->value(QLatin1String("webSearches")));
    if (!shortcuts || !disabled || !gap || !dragSnap || !clipboardEnabled || !clipboardMax || !retention || !excluded
        || !launcherFiles || !launcherSystem || !webSearches)
        return std::nullopt;

    SettingsData data;
    data.shortcuts = *shortcuts;
    data.disabled = QSet<QString>(disabled->cbegin(), disabled->cend());
    data.gap = *gap;
    data.dragSnap = *dragSnap;
    data.clipboardEnabled = *clipboardEnabled;
    data.clipboardMax = *clipboardMax;
    data.clipboardRetentionDays = *retention;
    data.clipboardExcluded = *excluded;
    data.launcherFiles = *launcherFiles;
    data.launcherSystem = *launcherSystem;
    data.webSearches = *webSearches;
    return data;
}

} // namespace tessary

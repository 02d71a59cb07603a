#include "core/settings/app_settings.h"

#include <QHash>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcSettings, "tessary.settings")

namespace tessary {

AppSettings::AppSettings(KeyValueStore &defaults, QObject *parent)
    : QObject(parent)
    , m_defaults(defaults)
{
    m_saveTimer.setSingleShot(true);
    m_saveTimer.setInterval(saveDelay);
    connect(&m_saveTimer, &QTimer::timeout, this, &AppSettings::save);
    const auto stored = m_defaults.bytes(QLatin1String(storageKey));
    if (!stored)
        return;
    if (auto decoded = SettingsData::fromJson(*stored)) {
        m_data = std::move(*decoded);
        return;
    }
    // The defaults replace the record at the next change: keep the user's shortcuts.
    if (m_defaults.bytes(QLatin1String(unreadableKey)) != stored)
        m_defaults.setBytes(QLatin1String(unreadableKey), *stored);
    qCWarning(lcSettings) << "cannot decode the settings record; using the defaults and keeping the old record under"
                          << unreadableKey;
}

void AppSettings::setData(const SettingsData &data)
{
    if (data == m_data)
        return;
    Q_EMIT aboutToChange();
    m_data = data;
    // Not restarted by later changes: a long burst of edits still lands every saveDelay.
    if (!m_saveTimer.isActive())
        m_saveTimer.start();
    Q_EMIT changed();
    if (onChange)
        onChange();
}

std::optional<KeyCombo> AppSettings::combo(HotAction action) const
{
    const QString raw = rawValue(action);
    if (m_data.disabled.contains(raw))
        return std::nullopt;
    return m_data.shortcuts.value(raw, defaultCombo(action));
}

void AppSettings::set(const std::optional<KeyCombo> &combo, HotAction action)
{
    const QString raw = rawValue(action);
    SettingsData next = m_data;
    if (combo) {
        next.disabled.remove(raw);
        setData(next);
        next = m_data;
        if (*combo == defaultCombo(action))
            next.shortcuts.remove(raw);
        else
            next.shortcuts.insert(raw, *combo);
        setData(next);
    } else {
        next.disabled.insert(raw);
        setData(next);
        next = m_data;
        next.shortcuts.remove(raw);
        setData(next);
    }
}

QSet<HotAction> AppSettings::duplicates() const
{
    QHash<KeyCombo, HotAction> seen;
    QSet<HotAction> result;
    for (HotAction action : HotActions::allCases) {
        const auto effective = combo(action);
        if (!effective)
            continue;
        const auto earlier = seen.constFind(*effective);
        if (earlier != seen.cend()) {
            result.insert(action);
            result.insert(*earlier);
        } else {
            seen.insert(*effective, action);
        }
    }
    return result;
}

void AppSettings::resetShortcuts()
{
    SettingsData next = m_data;
    next.shortcuts.clear();
    setData(next);
    next = m_data;
    next.disabled.clear();
    setData(next);
}

AppSettings::~AppSettings() { flush(); }

void AppSettings::flush()
{
    if (m_saveTimer.isActive())
        save();
}

void AppSettings::save()
{
    m_saveTimer.stop();
    m_defaults.setBytes(QLatin1String(storageKey), m_data.toJson());
}

} // namespace tessary

#include "core/platform/settings_key_value_store.h"

#include "core/app/data_directory.h"

#include <QFileInfo>

namespace tessary {

SettingsKeyValueStore::SettingsKeyValueStore()
    : m_settings(std::make_unique<QSettings>(QStringLiteral("Tessary"), QStringLiteral("Tessary")))
{
    makePrivate();
}

SettingsKeyValueStore::SettingsKeyValueStore(const QString &iniPath)
    : m_settings(std::make_unique<QSettings>(iniPath, QSettings::IniFormat))
{
    makePrivate();
}

void SettingsKeyValueStore::makePrivate()
{
    DataDirectory::ensurePrivate(QFileInfo(m_settings->fileName()).absolutePath());
}

std::optional<QByteArray> SettingsKeyValueStore::bytes(const QString &key) const
{
    const QVariant value = m_settings->value(key);
    if (value.typeId() != QMetaType::QByteArray)
        return std::nullopt;
    return value.toByteArray();
}

void SettingsKeyValueStore::setBytes(const QString &key, const QByteArray &value) { store(key, value); }

std::optional<bool> SettingsKeyValueStore::boolean(const QString &key) const
{
    const QVariant value = m_settings->value(key);
    if (!value.isValid())
        return std::nullopt;
    // INI files give back strings; accept only the two canonical spellings.
    const QString text = value.toString();
    if (value.typeId() == QMetaType::Bool || text == QLatin1String("true") || text == QLatin1String("false"))
        return value.toBool();
    return std::nullopt;
}

void SettingsKeyValueStore::setBoolean(const QString &key, bool value) { store(key, value); }

std::optional<QHash<QString, int>> SettingsKeyValueStore::intMap(const QString &key) const
{
    const QVariant value = m_settings->value(key);
    if (!value.canConvert<QVariantHash>() && !value.canConvert<QVariantMap>())
        return std::nullopt;
    QHash<QString, int> result;
    const QVariantMap entries = value.toMap();
    for (auto it = entries.cbegin(); it != entries.cend(); ++it) {
        bool ok = false;
        const int count = it.value().toInt(&ok);
        if (!ok)
            return std::nullopt;
        result.insert(it.key(), count);
    }
    return result;
}

void SettingsKeyValueStore::setIntMap(const QString &key, const QHash<QString, int> &value)
{
    QVariantMap entries;
    for (auto it = value.cbegin(); it != value.cend(); ++it)
        entries.insert(it.key(), it.value());
    store(key, entries);
}

void SettingsKeyValueStore::remove(const QString &key)
{
    m_settings->remove(key);
    sync();
}

void SettingsKeyValueStore::store(const QString &key, const QVariant &value)
{
    m_settings->setValue(key, value);
    sync();
}

void SettingsKeyValueStore::sync()
{
    m_settings->sync();
    // QSettings creates the file with the umask's permissions.
    DataDirectory::makePrivate(m_settings->fileName());
}

} // namespace tessary

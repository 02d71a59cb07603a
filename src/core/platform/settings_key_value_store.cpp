#include "core/platform/settings_key_value_store.h"

#include "core/app/data_directory.h"
#include "core/json/strict_json.h"
#include "core/platform/settings_file_format.h"

#include <QFileInfo>

#include <cmath>
#include <limits>

namespace tessary {

SettingsKeyValueStore::SettingsKeyValueStore(Access access)
    : m_settings(std::make_unique<QSettings>(
        SettingsFileFormat::format(), QSettings::UserScope, QStringLiteral("Tessary"), QStringLiteral("Tessary")))
    , m_access(access)
{
    if (access == Access::readWrite)
        makePrivate();
}

SettingsKeyValueStore::SettingsKeyValueStore(const QString &iniPath)
    : m_settings(std::make_unique<QSettings>(iniPath, SettingsFileFormat::format()))
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

// A JSON object of whole numbers, stored as bytes.
std::optional<QHash<QString, int>> SettingsKeyValueStore::intMap(const QString &key) const
{
    const std::optional<QByteArray> stored = bytes(key);
    const std::optional<QJsonObject> object = stored ? StrictJson::parseObject(*stored) : std::nullopt;
    if (!object)
        return std::nullopt;
    QHash<QString, int> result;
    for (auto it = object->constBegin(); it != object->constEnd(); ++it) {
        const double count = it.value().toDouble(0.5);
        if (!it.value().isDouble() || count != std::trunc(count) || std::abs(count) > std::numeric_limits<int>::max())
            return std::nullopt;
        result.insert(it.key(), int(count));
    }
    return result;
}

void SettingsKeyValueStore::setIntMap(const QString &key, const QHash<QString, int> &value)
{
    QJsonObject object;
    for (auto it = value.cbegin(); it != value.cend(); ++it)
        object.insert(it.key(), it.value());
    setBytes(key, StrictJson::compact(object));
}

void SettingsKeyValueStore::remove(const QString &key)
{
    if (m_access == Access::readOnly)
        return;
    m_settings->remove(key);
    sync();
}

void SettingsKeyValueStore::store(const QString &key, const QVariant &value)
{
    if (m_access == Access::readOnly)
        return;
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

#include "platform/fake/memory_key_value_store.h"

namespace tessary {

namespace {

template <typename T> std::optional<T> typed(const QHash<QString, QVariant> &values, const QString &key)
{
    const auto it = values.constFind(key);
    if (it == values.cend() || !it->canConvert<T>() || it->metaType() != QMetaType::fromType<T>())
        return std::nullopt;
    return it->value<T>();
}

} // namespace

std::optional<QByteArray> MemoryKeyValueStore::bytes(const QString &key) const
{
    return typed<QByteArray>(m_values, key);
}

void MemoryKeyValueStore::setBytes(const QString &key, const QByteArray &value)
{
    m_values.insert(key, value);
    ++m_writes;
}

std::optional<bool> MemoryKeyValueStore::boolean(const QString &key) const { return typed<bool>(m_values, key); }

void MemoryKeyValueStore::setBoolean(const QString &key, bool value)
{
    m_values.insert(key, value);
    ++m_writes;
}

std::optional<QHash<QString, int>> MemoryKeyValueStore::intMap(const QString &key) const
{
    return typed<QHash<QString, int>>(m_values, key);
}

void MemoryKeyValueStore::setIntMap(const QString &key, const QHash<QString, int> &value)
{
    m_values.insert(key, QVariant::fromValue(value));
    ++m_writes;
}

void MemoryKeyValueStore::remove(const QString &key)
{
    m_values.remove(key);
    ++m_writes;
}

} // namespace tessary

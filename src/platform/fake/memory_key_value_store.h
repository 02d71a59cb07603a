#pragma once

#include "core/platform/key_value_store.h"

#include <QVariant>

namespace tessary {

// In-memory defaults for tests: a "domain" that outlives the objects reading it.
class MemoryKeyValueStore final : public KeyValueStore {
public:
    std::optional<QByteArray> bytes(const QString &key) const override;
    void setBytes(const QString &key, const QByteArray &value) override;
    std::optional<bool> boolean(const QString &key) const override;
    void setBoolean(const QString &key, bool value) override;
    std::optional<QHash<QString, int>> intMap(const QString &key) const override;
    void setIntMap(const QString &key, const QHash<QString, int> &value) override;
    void remove(const QString &key) override;

    bool contains(const QString &key) const { return m_values.contains(key); }
    int writeCount() const { return m_writes; }

private:
    QHash<QString, QVariant> m_values;
    int m_writes = 0;
};

} // namespace tessary

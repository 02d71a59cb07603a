#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <optional>

namespace tessary {

// Per-user defaults (settings record, usage counts, one-time flags). Writes are
// persisted before the call returns; a value that cannot be read is absent.
class KeyValueStore {
public:
    virtual ~KeyValueStore() = default;

    virtual std::optional<QByteArray> bytes(const QString &key) const = 0;
    virtual void setBytes(const QString &key, const QByteArray &value) = 0;

    virtual std::optional<bool> boolean(const QString &key) const = 0;
    virtual void setBoolean(const QString &key, bool value) = 0;

    virtual std::optional<QHash<QString, int>> intMap(const QString &key) const = 0;
    virtual void setIntMap(const QString &key, const QHash<QString, int> &value) = 0;

    virtual void remove(const QString &key) = 0;
};

} // namespace tessary

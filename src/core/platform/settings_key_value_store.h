#pragma once

#include "core/platform/key_value_store.h"

#include <QSettings>

#include <memory>

namespace tessary {

// KeyValueStore over QSettings: the user's "Tessary" organisation and
// application by default, or an explicit file (tests, tools), both in
// SettingsFileFormat. The file and its folder are private to the user, like
// the data folder. A read-only
// store touches neither and drops every write (the self-check reads the
// user's settings and must leave them as they are).
class SettingsKeyValueStore final : public KeyValueStore {
public:
    enum class Access { readWrite, readOnly };

    explicit SettingsKeyValueStore(Access access = Access::readWrite);
    explicit SettingsKeyValueStore(const QString &iniPath);

    std::optional<QByteArray> bytes(const QString &key) const override;
    void setBytes(const QString &key, const QByteArray &value) override;
    std::optional<bool> boolean(const QString &key) const override;
    void setBoolean(const QString &key, bool value) override;
    std::optional<QHash<QString, int>> intMap(const QString &key) const override;
    void setIntMap(const QString &key, const QHash<QString, int> &value) override;
    void remove(const QString &key) override;

private:
    void makePrivate();
    void store(const QString &key, const QVariant &value);
    void sync();

    std::unique_ptr<QSettings> m_settings;
    Access m_access = Access::readWrite;
};

} // namespace tessary

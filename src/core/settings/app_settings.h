#pragma once

#include "core/app/hot_action.h"
#include "core/platform/key_value_store.h"
#include "core/settings/settings_data.h"

#include <QObject>
#include <QSet>
#include <QTimer>

#include <chrono>
#include <functional>
#include <optional>

namespace tessary {

// The settings record, persisted under "tessary.settings.v1" after every
// effective change. Changes take effect at once; their write waits up to
// saveDelay, so typing in a field writes the store a few times a second, not
// per keystroke. Destruction and flush() write what is pending. Main thread
// only. The store must outlive this object.
class AppSettings : public QObject {
    Q_OBJECT

public:
    static constexpr const char *storageKey = "tessary.settings.v1";
    static constexpr std::chrono::milliseconds saveDelay{500};
    // The latest record that could not be decoded, kept for the user to recover.
    static constexpr const char *unreadableKey = "tessary.settings.v1.unreadable";

    // Loads the stored record; a missing or undecodable one gives the defaults.
    // An undecodable one is first copied to `unreadableKey`; nothing else is
    // written until the next change.
    explicit AppSettings(KeyValueStore &defaults, QObject *parent = nullptr);
    ~AppSettings() override;

    const SettingsData &data() const { return m_data; }
    // Saves, announces and calls onChange only when `data` differs from the current record.
    void setData(const SettingsData &data);

    // Called after each effective change.
    std::function<void()> onChange;

    // The effective shortcut: none when cleared, else the custom one, else the default.
    std::optional<KeyCombo> combo(HotAction action) const;
    // Sets a custom shortcut (a default combo leaves no custom entry) or, with
    // no combo, clears it. Each step is its own change.
    void set(const std::optional<KeyCombo> &combo, HotAction action);
    // Every action whose effective shortcut another enabled action shares.
    QSet<HotAction> duplicates() const;
    // Drops all custom and cleared shortcuts (two changes).
    void resetShortcuts();
    // Writes a change still waiting for saveDelay now.
    void flush();

Q_SIGNALS:
    void aboutToChange();
    void changed();

private:
    void save();

    KeyValueStore &m_defaults;
    SettingsData m_data;
    QTimer m_saveTimer;
};

} // namespace tessary

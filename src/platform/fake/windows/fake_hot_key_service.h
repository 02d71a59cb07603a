#pragma once

#include "core/platform/hot_key_service.h"

#include <QHash>
#include <QSet>

namespace tessary {

// In-memory system-wide hot keys. A combination is refused while it is
// registered here or held by another application (holdByOtherApp). press()
// plays the platform: it calls the pressed handler synchronously with the id
// the combination was registered under.
class FakeHotKeyService final : public HotKeyService {
public:
    void holdByOtherApp(const KeyCombo &combo) { m_heldElsewhere.insert(combo); }
    void releaseByOtherApp(const KeyCombo &combo) { m_heldElsewhere.remove(combo); }
    // Plays a keyboard change: calls the keyboard-changed handler.
    void changeKeyboard()
    {
        if (m_keyboardChanged)
            m_keyboardChanged();
    }

    // True when `combo` is registered; its id then went to the pressed handler.
    bool press(const KeyCombo &combo);
    // Delivers a pressed event for `id` whether or not anything is registered
    // under it, as a platform event queued before an unregistration would.
    void deliverPressed(quint32 id);

    bool isRegistered(const KeyCombo &combo) const;
    qsizetype registrationCount() const { return m_registrations.size(); }

    void setPressedHandler(std::function<void(quint32 id)> handler) override;
    void setKeyboardChangedHandler(std::function<void()> handler) override { m_keyboardChanged = std::move(handler); }
    std::optional<quint64> registerHotKey(const KeyCombo &combo, quint32 id) override;
    void unregisterHotKey(quint64 reference) override;

private:
    struct Registration {
        KeyCombo combo;
        quint32 id = 0;
    };

    std::function<void(quint32)> m_pressed;
    std::function<void()> m_keyboardChanged;
    QHash<quint64, Registration> m_registrations;
    QSet<KeyCombo> m_heldElsewhere;
    quint64 m_nextReference = 1;
};

} // namespace tessary

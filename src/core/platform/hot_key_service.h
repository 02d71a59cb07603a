#pragma once

#include "core/shortcuts/key_combo.h"

#include <QtGlobal>

#include <functional>
#include <optional>

namespace tessary {

// The platform's system-wide hot key registration. Main thread only.
class HotKeyService {
public:
    virtual ~HotKeyService() = default;

    // Called with the id given at registration each time its combination is
    // pressed, from the platform's event dispatch on the main thread.
    virtual void setPressedHandler(std::function<void(quint32 id)> handler) = 0;
    // Called on the main thread after a keyboard change moved registrations
    // to the keys now at their positions (some may have been lost there, and
    // combinations refused before may be free now) or brought a key where a
    // combination refused as not typeable has its position.
    virtual void setKeyboardChangedHandler(std::function<void()> handler) = 0;
    // A reference for unregistering, or none when the combination is refused
    // (held by another application, by this one, or not typeable here).
    virtual std::optional<quint64> registerHotKey(const KeyCombo &combo, quint32 id) = 0;
    virtual void unregisterHotKey(quint64 reference) = 0;
};

} // namespace tessary

#pragma once

#include "core/platform/hot_key_service.h"
#include "platform/x11/windows/x11_keyboard_freeze.h"
#include "platform/x11/x11_connection.h"

#include <QAbstractNativeEventFilter>
#include <QHash>
#include <QMetaObject>
#include <QObject>

#include <optional>

namespace tessary {

// Hot keys as passive key grabs on the root window. A combination is grabbed
// on the key at its ANSI position (whatever that key types in the current
// layout), with Ctrl, Alt, Shift and Super as control, option, shift and
// command, once for each state of Caps Lock and Num Lock so that the locks
// never stop a hot key. A combination some other client (or this service)
// already holds is refused and nothing of it stays grabbed. When the keyboard
// changes, the keys and modifier masks are read anew and the grabs that moved
// are redone. The grabs end with the object. Holding a hot key down fires it once (auto-repeat is ignored
// where the server reports repeats without releases, as it does for Qt's
// connection). Each press freezes the keyboard until its handler has run
// (see X11KeyboardFreeze). Needs the application object; main thread only.
class X11KeyPositions;

class X11HotKeyService final : public HotKeyService, private QAbstractNativeEventFilter {
public:
    X11HotKeyService(X11Connection &x11, X11KeyPositions &positions);
    ~X11HotKeyService() override;

    X11HotKeyService(const X11HotKeyService &) = delete;
    X11HotKeyService &operator=(const X11HotKeyService &) = delete;

    void setPressedHandler(std::function<void(quint32 id)> handler) override;
    void setKeyboardChangedHandler(std::function<void()> handler) override;
    std::optional<quint64> registerHotKey(const KeyCombo &combo, quint32 id) override;
    void unregisterHotKey(quint64 reference) override;

    X11KeyboardFreeze &keyboardFreeze() { return m_freeze; }

private:
    struct Grab {
        KeyCombo combo;
        // 0 while the keyboard has no key at the combination's position.
        xcb_keycode_t keycode = 0;
        uint16_t modifiers = 0;
        // Lock bits left out when matching a press (Caps Lock, Num Lock).
        uint16_t locks = 0;
        quint32 id = 0;
    };
    struct ModifierMasks {
        uint16_t alt = XCB_MOD_MASK_1;
        uint16_t numLock = XCB_MOD_MASK_2;
        uint16_t super = XCB_MOD_MASK_4;
    };

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    // The modifier masks as last read; dropped when the keyboard changes.
    const ModifierMasks &currentMasks();
    ModifierMasks readModifierMasks() const;
    // The grab of `combo` on the current keyboard (keycode 0 when it has no such key).
    Grab grabFor(const KeyCombo &combo, quint32 id);
    // Sends the four lock variants of `grab`; true when the server took them all.
    bool sendGrab(const Grab &grab);
    void ungrab(const Grab &grab);
    void regrabMovedKeys();

    X11Connection &m_x11;
    X11KeyboardFreeze m_freeze;
    // Context of the queued thaw that follows each press's handler.
    QObject m_afterHandlers;
    X11KeyPositions &m_positions;
    QMetaObject::Connection m_keyboardChanged;
    std::optional<ModifierMasks> m_masks;
    std::function<void(quint32)> m_handler;
    std::function<void()> m_keyboardChangedHandler;
    QHash<quint64, Grab> m_grabs;
    // Refused because this keyboard has no key at their position: a new
    // keyboard that has one is announced, so that they are asked for again.
    QList<KeyCombo> m_untypable;
    // The key of a hot key that is down: its auto-repeated presses do not fire.
    xcb_keycode_t m_heldKey = 0;
    xcb_timestamp_t m_heldSince = 0;
    quint64 m_nextReference = 1;
};

} // namespace tessary

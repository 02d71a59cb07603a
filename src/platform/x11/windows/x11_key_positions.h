#pragma once

#include "core/platform/key_positions.h"
#include "platform/x11/x11_connection.h"

#include <QAbstractNativeEventFilter>
#include <QHash>
#include <QObject>

#include <optional>

namespace tessary {

// Key positions from the XKB key names of the current keyboard: the key named
// "AC01" is where A sits on an ANSI keyboard, whatever it types in the current
// layout or group. The names are read once and again after the server
// announces a new keyboard or a changed mapping (setxkbmap, a keyboard
// plugged in, xmodmap). Needs the application object; main thread only.
class X11KeyPositions final : public QObject, public KeyPositions, private QAbstractNativeEventFilter {
    Q_OBJECT
public:
    explicit X11KeyPositions(X11Connection &x11, QObject *parent = nullptr);
    ~X11KeyPositions() override;

    int keyCode(quint32 nativeKey) const override;
    // The X keycode of the key at the portable position `keyCode`; none when
    // this keyboard has no key there.
    std::optional<xcb_keycode_t> nativeKey(quint32 keyCode) const;

Q_SIGNALS:
    // The keyboard or its mapping changed: keycodes, symbols and modifier
    // mappings are to be read anew. Once for a burst of server notices.
    void keyboardChanged();

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    // Portable code → keycode, read from the server on first use after a change.
    const QHash<quint32, xcb_keycode_t> &positions() const;
    QHash<quint32, xcb_keycode_t> readPositions() const;

    X11Connection &m_x11;
    uint8_t m_xkbEventBase = 0;
    bool m_changePending = false;
    mutable std::optional<QHash<quint32, xcb_keycode_t>> m_positions;
};

} // namespace tessary

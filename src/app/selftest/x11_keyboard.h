#pragma once

#include "platform/x11/windows/x11_key_positions.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace tessary {

// The keyboard as the X server describes it. Main thread only.
class X11Keyboard {
public:
    explicit X11Keyboard(X11Connection &x11);

    // The XKB rule names the session was set up with (_XKB_RULES_NAMES);
    // none when the server publishes none.
    struct Names {
        QString model;
        QString layout;
        QString variant;
        QStringList options;
    };
    std::optional<Names> names() const;

    // Whether the keyboard has a key at a KeyCombo key position (by XKB key name).
    bool hasKeyAt(quint32 keyCode) const;

private:
    X11Connection &m_x11;
    X11KeyPositions m_positions;
};

} // namespace tessary

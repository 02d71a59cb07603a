#pragma once

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

struct _XCBKeySymbols;
typedef struct _XCBKeySymbols xcb_key_symbols_t;

namespace tessary {

class X11Connection;

// The keyboard as the X server describes it. Each call reads it afresh. Main thread only.
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

    // Whether some key of the current mapping sits at a KeyCombo key position.
    bool hasKeyAt(quint32 keyCode) const;

private:
    struct SymbolsDeleter {
        void operator()(xcb_key_symbols_t *symbols) const;
    };
    X11Connection &m_x11;
    std::unique_ptr<xcb_key_symbols_t, SymbolsDeleter> m_symbols;
};

} // namespace tessary

#include "app/selftest/x11_keyboard.h"

#include "platform/x11/windows/key_positions.h"
#include "platform/x11/windows/x11_properties.h"
#include "platform/x11/x11_connection.h"

#include <xcb/xcb_keysyms.h>

#include <cstdlib>

namespace tessary {

void X11Keyboard::SymbolsDeleter::operator()(xcb_key_symbols_t *symbols) const { xcb_key_symbols_free(symbols); }

X11Keyboard::X11Keyboard(X11Connection &x11)
    : m_x11(x11)
    , m_symbols(xcb_key_symbols_alloc(x11.connection()))
{
}

std::optional<X11Keyboard::Names> X11Keyboard::names() const
{
    const std::optional<QByteArray> raw
        = X11Properties::bytes(m_x11.connection(), m_x11.root(), m_x11.atom("_XKB_RULES_NAMES"));
    if (!raw)
        return std::nullopt;
    // rules, model, layout, variant, options: NUL-separated.
    const QList<QByteArray> fields = raw->split('\0');
    const auto field = [&fields](int index) { return QString::fromLatin1(fields.value(index)); };
    return Names{field(1), field(2), field(3), field(4).split(QLatin1Char(','), Qt::SkipEmptyParts)};
}

bool X11Keyboard::hasKeyAt(quint32 keyCode) const
{
    const std::optional<quint32> keysym = KeyPositions::keysym(keyCode);
    if (!keysym || !m_symbols)
        return false;
    xcb_keycode_t *keycodes = xcb_key_symbols_get_keycode(m_symbols.get(), *keysym);
    const bool found = keycodes && keycodes[0] != XCB_NO_SYMBOL;
    std::free(keycodes);
    return found;
}

} // namespace tessary

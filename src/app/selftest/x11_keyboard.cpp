#include "app/selftest/x11_keyboard.h"

#include "platform/x11/windows/x11_properties.h"
#include "platform/x11/x11_connection.h"

namespace tessary {

X11Keyboard::X11Keyboard(X11Connection &x11)
    : m_x11(x11)
    , m_positions(x11)
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

bool X11Keyboard::hasKeyAt(quint32 keyCode) const { return m_positions.nativeKey(keyCode).has_value(); }

} // namespace tessary

#include "app/selftest/combo_text.h"

namespace tessary {

QString comboText(const KeyCombo &combo)
{
    static const QHash<std::uint32_t, QString> spelled = {{123, QStringLiteral("Left")}, {124, QStringLiteral("Right")},
        {126, QStringLiteral("Up")}, {125, QStringLiteral("Down")}, {36, QStringLiteral("Return")},
        {51, QStringLiteral("Backspace")}, {48, QStringLiteral("Tab")}, {53, QStringLiteral("Escape")},
        {117, QStringLiteral("Delete")}, {115, QStringLiteral("Home")}, {119, QStringLiteral("End")},
        {116, QStringLiteral("Page Up")}, {121, QStringLiteral("Page Down")}};
    QStringList parts;
    if (combo.modifiers & KeyCombo::control)
        parts.append(QStringLiteral("Ctrl"));
    if (combo.modifiers & KeyCombo::option)
        parts.append(QStringLiteral("Alt"));
    if (combo.modifiers & KeyCombo::shift)
        parts.append(QStringLiteral("Shift"));
    if (combo.modifiers & KeyCombo::command)
        parts.append(QStringLiteral("Super"));
    const QString key = spelled.value(combo.keyCode, KeyCombo::keyNames().value(combo.keyCode));
    parts.append(key.isEmpty() ? QStringLiteral("Key %1").arg(combo.keyCode) : key);
    return parts.join(QLatin1Char('+'));
}

} // namespace tessary

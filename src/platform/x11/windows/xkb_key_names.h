#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <utility>
#include <vector>

namespace tessary::XkbKeyNames {

// Each portable key code (ANSI position, as KeyCombo stores it) with the XKB
// name of the key at that position ("AC01" is the key right of Caps Lock).
// The names describe places on the keyboard, so they hold in every layout.
const std::vector<std::pair<quint32, QByteArray>> &positions();

} // namespace tessary::XkbKeyNames

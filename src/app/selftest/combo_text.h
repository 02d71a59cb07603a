#pragma once

#include "core/shortcuts/key_combo.h"

namespace tessary {

// A combination as Linux desktops write it: "Ctrl+Alt+Left", "Ctrl+Alt+Backspace".
QString comboText(const KeyCombo &combo);

} // namespace tessary

#pragma once

#include <QtGlobal>

#include <optional>

namespace tessary::KeyPositions {

// The X keysym that a US keyboard produces, unshifted, at the ANSI key
// position of a KeyCombo key code; none for codes outside KeyCombo::keyNames().
std::optional<quint32> keysym(quint32 keyCode);

} // namespace tessary::KeyPositions

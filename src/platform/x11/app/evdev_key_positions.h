#pragma once

#include "core/platform/key_positions.h"

namespace tessary {

// Key positions from X keycodes as the evdev keycode set numbers them (the
// Linux kernel's key numbers plus 8), which is what X servers on Linux use
// for every keyboard whatever the layout.
class EvdevKeyPositions final : public KeyPositions {
public:
    int keyCode(quint32 nativeKey) const override;
};

} // namespace tessary

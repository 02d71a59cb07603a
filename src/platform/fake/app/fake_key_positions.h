#pragma once

#include "core/platform/key_positions.h"

#include <QHash>

namespace tessary {

// Hardware keys by table; a key missing from `codes` has no portable code.
class FakeKeyPositions final : public KeyPositions {
public:
    int keyCode(quint32 nativeKey) const override { return codes.value(nativeKey, -1); }

    QHash<quint32, int> codes;
};

} // namespace tessary

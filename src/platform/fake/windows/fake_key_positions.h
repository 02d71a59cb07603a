#pragma once

#include "core/platform/key_positions.h"

#include <QHash>

namespace tessary {

// A keyboard whose hardware keys are numbered as the test says: setKey(n, c)
// puts the portable key code c on native key n; other keys have none.
class FakeKeyPositions final : public KeyPositions {
public:
    void setKey(quint32 nativeKey, int keyCode) { m_codes.insert(nativeKey, keyCode); }
    int keyCode(quint32 nativeKey) const override { return m_codes.value(nativeKey, -1); }

private:
    QHash<quint32, int> m_codes;
};

} // namespace tessary

#pragma once

#include "core/windows/rect.h"

#include <QString>
#include <QStringView>

#include <array>
#include <optional>

namespace tessary {

// The window layouts; the raw value (stored form) is the enumerator's name.
enum class Layout {
    leftHalf,
    rightHalf,
    topHalf,
    bottomHalf,
    topLeft,
    topRight,
    bottomLeft,
    bottomRight,
    firstThird,
    centerThird,
    lastThird,
    firstTwoThirds,
    lastTwoThirds,
    maximize,
    center,
};

namespace Layouts {
inline constexpr std::array<Layout, 15> allCases = {
    Layout::leftHalf,
    Layout::rightHalf,
    Layout::topHalf,
    Layout::bottomHalf,
    Layout::topLeft,
    Layout::topRight,
    Layout::bottomLeft,
    Layout::bottomRight,
    Layout::firstThird,
    Layout::centerThird,
    Layout::lastThird,
    Layout::firstTwoThirds,
    Layout::lastTwoThirds,
    Layout::maximize,
    Layout::center,
};

// Exact, case-sensitive match of a raw value; anything else yields nothing.
std::optional<Layout> fromRawValue(QStringView raw);
} // namespace Layouts

QString rawValue(Layout layout);
QString title(Layout layout);
// Fractions of the visible area, origin bottom-left, y up; none for `center`.
std::optional<Rect> unitRect(Layout layout);

} // namespace tessary

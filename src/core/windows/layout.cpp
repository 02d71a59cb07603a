#include "core/windows/layout.h"

namespace tessary {

namespace {

struct LayoutRow {
    const char *raw;
    const char *title;
    std::optional<Rect> unit;
};

constexpr double third = 1.0 / 3.0;
constexpr double twoThirds = 2.0 / 3.0;

const LayoutRow &row(Layout layout)
{
    static const std::array<LayoutRow, 15> rows = {{
        {"leftHalf", "Left half", Rect{0, 0, 0.5, 1}},
        {"rightHalf", "Right half", Rect{0.5, 0, 0.5, 1}},
        {"topHalf", "Top half", Rect{0, 0.5, 1, 0.5}},
        {"bottomHalf", "Bottom half", Rect{0, 0, 1, 0.5}},
        {"topLeft", "Top left", Rect{0, 0.5, 0.5, 0.5}},
        {"topRight", "Top right", Rect{0.5, 0.5, 0.5, 0.5}},
        {"bottomLeft", "Bottom left", Rect{0, 0, 0.5, 0.5}},
        {"bottomRight", "Bottom right", Rect{0.5, 0, 0.5, 0.5}},
        {"firstThird", "First third", Rect{0, 0, third, 1}},
        {"centerThird", "Center third", Rect{third, 0, third, 1}},
        {"lastThird", "Last third", Rect{twoThirds, 0, third, 1}},
        {"firstTwoThirds", "First two thirds", Rect{0, 0, twoThirds, 1}},
        {"lastTwoThirds", "Last two thirds", Rect{third, 0, twoThirds, 1}},
        {"maximize", "Maximize", Rect{0, 0, 1, 1}},
        {"center", "Center", std::nullopt},
    }};
    return rows[static_cast<std::size_t>(layout)];
}

} // namespace

std::optional<Layout> Layouts::fromRawValue(QStringView raw)
{
    for (Layout layout : allCases) {
        if (raw == QLatin1String(row(layout).raw))
            return layout;
    }
    return std::nullopt;
}

QString rawValue(Layout layout) { return QString::fromLatin1(row(layout).raw); }

QString title(Layout layout) { return QString::fromLatin1(row(layout).title); }

std::optional<Rect> unitRect(Layout layout) { return row(layout).unit; }

} // namespace tessary

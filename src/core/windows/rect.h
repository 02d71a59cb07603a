#pragma once

#include <algorithm>
#include <cmath>
#include <compare>

namespace tessary {

// Origin and size in points. Which way y grows depends on the coordinate space
// the value is in (desktop: y up; accessibility/X11: y down); the min/max
// accessors are those of the rectangle with a non-negative size either way.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    double minX() const { return std::min(x, x + width); }
    double maxX() const { return std::max(x, x + width); }
    double midX() const { return (minX() + maxX()) / 2; }
    double minY() const { return std::min(y, y + height); }
    double maxY() const { return std::max(y, y + height); }
    double midY() const { return (minY() + maxY()) / 2; }
    double absWidth() const { return std::abs(width); }
    double absHeight() const { return std::abs(height); }

    // Area of the intersection with `other`; 0 when they only touch or are apart.
    double overlapArea(const Rect &other) const
    {
        const double w = std::min(maxX(), other.maxX()) - std::max(minX(), other.minX());
        const double h = std::min(maxY(), other.maxY()) - std::max(minY(), other.minY());
        return (w > 0 && h > 0) ? w * h : 0;
    }

    bool contains(double px, double py) const { return px >= minX() && px <= maxX() && py >= minY() && py <= maxY(); }

    friend bool operator==(const Rect &, const Rect &) = default;
};

} // namespace tessary

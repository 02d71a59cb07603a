#include "core/windows/geometry.h"

#include <array>
#include <cmath>

namespace tessary::Geometry {

namespace {

constexpr double edgeLow = 0.0001;
constexpr double edgeHigh = 0.9999;

Rect roundedFrame(double x0, double y0, double x1, double y1)
{
    return {roundPoint(x0), roundPoint(y0), roundPoint(x1 - x0), roundPoint(y1 - y0)};
}

Rect centered(const Rect &visible, double gap, const std::optional<Rect> &current)
{
    const double startWidth = current ? current->absWidth() : 0.6 * visible.absWidth();
    const double startHeight = current ? current->absHeight() : 0.7 * visible.absHeight();
    const double w = std::min(startWidth, visible.absWidth() - 2 * gap);
    const double h = std::min(startHeight, visible.absHeight() - 2 * gap);
    return {roundPoint(visible.midX() - w / 2), roundPoint(visible.midY() - h / 2), roundPoint(w), roundPoint(h)};
}

} // namespace

double roundPoint(double value) { return std::round(value); }

Rect target(Layout layout, const Rect &visible, double gap, const std::optional<Rect> &current)
{
    const std::optional<Rect> unit = unitRect(layout);
    if (!unit)
        return centered(visible, gap, current);

    const double left = unit->x < edgeLow ? gap : gap / 2;
    const double right = unit->x + unit->width > edgeHigh ? gap : gap / 2;
    const double bottom = unit->y < edgeLow ? gap : gap / 2;
    const double top = unit->y + unit->height > edgeHigh ? gap : gap / 2;

    const double w = visible.absWidth();
    const double h = visible.absHeight();
    const double x0 = visible.minX() + unit->x * w + left;
    const double x1 = visible.minX() + (unit->x + unit->width) * w - right;
    const double y0 = visible.minY() + unit->y * h + bottom;
    const double y1 = visible.minY() + (unit->y + unit->height) * h - top;
    return roundedFrame(x0, y0, x1, y1);
}

std::span<const Layout> cycles(Layout pressed)
{
    static constexpr std::array<Layout, 3> left = {Layout::leftHalf, Layout::firstTwoThirds, Layout::firstThird};
    static constexpr std::array<Layout, 3> right = {Layout::rightHalf, Layout::lastTwoThirds, Layout::lastThird};
    switch (pressed) {
    case Layout::leftHalf:
        return left;
    case Layout::rightHalf:
        return right;
    default:
        return {};
    }
}

Layout resolve(Layout pressed, const std::optional<Rect> &current, const Rect &visible, double gap, double tolerance)
{
    const std::span<const Layout> cycle = cycles(pressed);
    if (cycle.empty() || !current)
        return pressed;
    for (std::size_t i = 0; i < cycle.size(); ++i) {
        if (approx(target(cycle[i], visible, gap, current), *current, tolerance))
            return cycle[(i + 1) % cycle.size()];
    }
    return cycle.front();
}

bool approx(const Rect &a, const Rect &b, double tolerance)
{
    return std::abs(a.minX() - b.minX()) <= tolerance && std::abs(a.minY() - b.minY()) <= tolerance
        && std::abs(a.absWidth() - b.absWidth()) <= tolerance && std::abs(a.absHeight() - b.absHeight()) <= tolerance;
}

std::size_t screenIndex(const Rect &window, std::span<const Rect> screens)
{
    if (screens.empty())
        return 0;

    std::size_t best = 0;
    double bestOverlap = 0;
    for (std::size_t i = 0; i < screens.size(); ++i) {
        const double overlap = screens[i].overlapArea(window);
        if (overlap > bestOverlap) {
            best = i;
            bestOverlap = overlap;
        }
    }
    if (bestOverlap > 0)
        return best;

    std::size_t nearest = 0;
    double nearestDistance = std::hypot(screens[0].midX() - window.midX(), screens[0].midY() - window.midY());
    for (std::size_t i = 1; i < screens.size(); ++i) {
        const double distance = std::hypot(screens[i].midX() - window.midX(), screens[i].midY() - window.midY());
        if (distance < nearestDistance) {
            nearest = i;
            nearestDistance = distance;
        }
    }
    return nearest;
}

Rect remap(const Rect &frame, const Rect &from, const Rect &to)
{
    if (from.absWidth() <= 0 || from.absHeight() <= 0)
        return frame;

    const double w = std::min(to.absWidth(), frame.absWidth() * to.absWidth() / from.absWidth());
    const double h = std::min(to.absHeight(), frame.absHeight() * to.absHeight() / from.absHeight());
    const double px = (frame.minX() - from.minX()) / from.absWidth();
    const double py = (frame.minY() - from.minY()) / from.absHeight();

    double x = to.minX() + px * to.absWidth();
    x = std::min(std::max(x, to.minX()), to.maxX() - w);
    double y = to.minY() + py * to.absHeight();
    y = std::min(std::max(y, to.minY()), to.maxY() - h);
    return {roundPoint(x), roundPoint(y), roundPoint(w), roundPoint(h)};
}

Rect flip(const Rect &rect, double primaryHeight)
{
    return {rect.minX(), primaryHeight - rect.maxY(), rect.absWidth(), rect.absHeight()};
}

} // namespace tessary::Geometry

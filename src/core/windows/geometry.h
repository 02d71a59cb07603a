#pragma once

#include "core/windows/layout.h"
#include "core/windows/rect.h"

#include <cstddef>
#include <optional>
#include <span>

namespace tessary::Geometry {

// Every computed frame is rounded to whole points, halves away from zero.
double roundPoint(double value);

// Frame of `layout` inside `visible` (desktop coordinates) with `gap` points
// around it; `current` is only read by `center`.
Rect target(Layout layout, const Rect &visible, double gap, const std::optional<Rect> &current);

// How far, in points per coordinate, a window may sit from a step of a cycle
// and still count as being at it.
inline constexpr double cycleTolerance = 6;

// The layout to apply when `pressed` is asked for again: a half whose window
// already sits at a step of its cycle (within `tolerance`) moves on to the
// next step.
Layout resolve(Layout pressed, const std::optional<Rect> &current, const Rect &visible, double gap,
    double tolerance = cycleTolerance);

// The cycle a repeated layout walks through; empty for layouts that do not cycle.
std::span<const Layout> cycles(Layout pressed);

bool approx(const Rect &a, const Rect &b, double tolerance);

// Index of the display a window belongs to: largest overlap, else nearest
// centre; ties go to the earlier display. An empty list yields 0.
std::size_t screenIndex(const Rect &window, std::span<const Rect> screens);

// Carries `frame` from area `from` to area `to`, keeping its relative size and
// position and keeping it wholly inside `to`.
Rect remap(const Rect &frame, const Rect &from, const Rect &to);

// Converts between desktop (y up) and top-left (y down) coordinates; its own inverse.
Rect flip(const Rect &rect, double primaryHeight);

} // namespace tessary::Geometry

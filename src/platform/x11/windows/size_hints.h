#pragma once

#include <QSize>

namespace tessary {

// The ICCCM size constraints a client asks its window manager to enforce
// (WM_NORMAL_HINTS); a zero field means the client set no such constraint.
struct SizeHints {
    QSize minimum;
    QSize maximum;
    QSize base;
    QSize increment;

    // The client size a window manager that honours these hints gives for a
    // request of `requested`: at least the minimum, whole increments above the
    // base (the minimum when no base is set), at most the maximum.
    QSize constrain(QSize requested) const;
};

} // namespace tessary

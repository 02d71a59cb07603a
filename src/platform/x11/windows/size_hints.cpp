#include "platform/x11/windows/size_hints.h"

#include <algorithm>

namespace tessary {
namespace {

int constrainOne(int value, int minimum, int maximum, int base, int increment)
{
    value = std::max(value, minimum);
    if (increment > 1) {
        const int from = base > 0 ? base : minimum;
        if (value > from)
            value = from + (value - from) / increment * increment;
    }
    if (maximum > 0)
        value = std::min(value, maximum);
    return std::max(value, 1);
}

} // namespace

QSize SizeHints::constrain(QSize requested) const
{
    return {constrainOne(requested.width(), minimum.width(), maximum.width(), base.width(), increment.width()),
        constrainOne(requested.height(), minimum.height(), maximum.height(), base.height(), increment.height())};
}

} // namespace tessary

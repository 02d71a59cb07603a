#pragma once

#include "core/windows/rect.h"
#include "core/windows/window_manager.h"

#include <ostream>

namespace tessary {

// Readable values in GoogleTest failure messages.
inline void PrintTo(const Rect &r, std::ostream *os)
{
    *os << "(" << r.x << ", " << r.y << ", " << r.width << ", " << r.height << ")";
}

inline void PrintTo(Layout layout, std::ostream *os) { *os << rawValue(layout).toStdString(); }

inline void PrintTo(WindowManager::Failure failure, std::ostream *os)
{
    *os << WindowManager::errorDescription(failure).toStdString();
}

inline void PrintTo(const WindowManager::ApplyResult &result, std::ostream *os)
{
    if (const auto layout = result.layout())
        PrintTo(*layout, os);
    else
        PrintTo(*result.failure(), os);
}

} // namespace tessary

#pragma once

#include <QLoggingCategory>

namespace tessary {

// Diagnostics of window moves and drag snapping ("tessary.windows").
Q_DECLARE_LOGGING_CATEGORY(lcWindows)

} // namespace tessary

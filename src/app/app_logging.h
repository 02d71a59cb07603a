#pragma once

#include <QLoggingCategory>

namespace tessary {

// Diagnostics of the application shell; silent unless enabled by logging rules
// ("tessary.app.info=true"). The user-facing log file is separate.
Q_DECLARE_LOGGING_CATEGORY(lcApp)

} // namespace tessary

#pragma once

#include <QLoggingCategory>

namespace tessary {

Q_DECLARE_LOGGING_CATEGORY(lcUi)

} // namespace tessary

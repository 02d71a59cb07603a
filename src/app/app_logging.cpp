#include "app/app_logging.h"

namespace tessary {

Q_LOGGING_CATEGORY(lcApp, "tessary.app", QtWarningMsg)

} // namespace tessary

#include "core/windows/windows_logging.h"

namespace tessary {

Q_LOGGING_CATEGORY(lcWindows, "tessary.windows")

} // namespace tessary

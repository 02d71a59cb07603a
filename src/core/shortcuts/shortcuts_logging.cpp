#include "core/shortcuts/shortcuts_logging.h"

namespace tessary {

Q_LOGGING_CATEGORY(lcShortcuts, "tessary.shortcuts")

} // namespace tessary

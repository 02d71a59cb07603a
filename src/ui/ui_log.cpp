#include "ui/ui_log.h"

namespace tessary {

Q_LOGGING_CATEGORY(lcUi, "tessary.ui")

} // namespace tessary

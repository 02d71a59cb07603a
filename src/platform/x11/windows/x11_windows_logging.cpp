#include "platform/x11/windows/x11_windows_logging.h"

Q_LOGGING_CATEGORY(lcX11Windows, "tessary.x11.windows")

#pragma once

#include <QLoggingCategory>

// Diagnostics of the X11 window, screen, pointer and hot key backends.
Q_DECLARE_LOGGING_CATEGORY(lcX11Windows)

#pragma once

#include <QByteArray>

typedef struct _GAppLaunchContext GAppLaunchContext;

namespace tessary {

// A GIO launch context that hands GIO a startup-notification id, which GIO
// passes on whichever way it starts the application: as DESKTOP_STARTUP_ID to
// a program it runs, and as the "desktop-startup-id" (and, in newer GIO,
// "activation-token") platform data of a D-Bus activation. An empty id adds
// nothing. The caller owns the returned reference.
GAppLaunchContext *newStartupLaunchContext(const QByteArray &startupId);

} // namespace tessary

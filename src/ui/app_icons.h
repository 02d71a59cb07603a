#pragma once

#include <QIcon>

namespace tessary::AppIcons {

// Tessary's own pictures, compiled into the program so that a build run from
// its folder looks like the installed one. Main thread only.

// The tray symbol: light tiles with a dark outline, one picture that reads on
// light and dark panels alike (the tray never tells us its colour).
QIcon tray();

// The application icon, for windows and dialogs.
QIcon application();

} // namespace tessary::AppIcons

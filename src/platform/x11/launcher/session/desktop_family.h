#pragma once

#include <QString>

namespace tessary {

// The desktops whose session services Tessary talks to; `other` gets only
// what every Linux session has (logind, UDisks2, the Trash).
enum class DesktopFamily { gnome, kde, xfce, lxqt, mate, other };

// From XDG_CURRENT_DESKTOP, a colon-separated list ("ubuntu:GNOME"), the first
// known name winning.
DesktopFamily desktopFamily(const QString &currentDesktop);

// The desktop's own settings program, or empty.
QString settingsProgram(DesktopFamily family);

} // namespace tessary

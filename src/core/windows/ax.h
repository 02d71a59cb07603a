#pragma once

#include "core/platform/accessibility.h"
#include "core/platform/running_app.h"
#include "core/platform/workspace.h"

#include <QString>

#include <optional>

namespace tessary::AX {

// The window a window operation acts on and the application that owns it.
struct FrontWindow {
    WindowId window = 0;
    RunningApp app;
};

// The focused window of the application the user is working in. When this
// process is in front (one of its panels is active) the application the user
// was in before is taken instead; none when that is again this process or
// there is no such application or window.
std::optional<FrontWindow> frontWindow(const Workspace &workspace, const Accessibility &accessibility);

// "<pid>:<window hash>", e.g. "812:10543219": names a window across operations
// for as long as the backend hashes it the same.
QString key(const Accessibility &accessibility, WindowId window, qint64 pid);

} // namespace tessary::AX

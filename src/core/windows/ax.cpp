#include "core/windows/ax.h"

namespace tessary::AX {

std::optional<FrontWindow> frontWindow(const Workspace &workspace, const Accessibility &accessibility)
{
    const qint64 ownPid = workspace.ownPid();
    std::optional<RunningApp> app = workspace.frontmostApplication();
    if (!app)
        return std::nullopt;
    if (app->pid == ownPid)
        app = workspace.menuBarOwningApplication();
    if (!app || app->pid == ownPid)
        return std::nullopt;
    const std::optional<WindowId> window = accessibility.focusedWindow(*app);
    if (!window)
        return std::nullopt;
    return FrontWindow{*window, *app};
}

QString key(const Accessibility &accessibility, WindowId window, qint64 pid)
{
    return QString::number(pid) + u':' + QString::number(accessibility.windowHash(window));
}

} // namespace tessary::AX

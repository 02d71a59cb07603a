#pragma once

#include "core/platform/workspace.h"
#include "platform/x11/windows/x11_activation_history.h"
#include "platform/x11/windows/x11_apps.h"

namespace tessary {

// Workspace over EWMH. The frontmost application owns _NET_ACTIVE_WINDOW; the
// application the user was last working in is taken from the changes of that
// property seen since construction (the last active window not of this
// process), else from the stacking order. Needs the application object; main
// thread only.
class X11Workspace final : public Workspace {
public:
    explicit X11Workspace(X11Connection &x11);

    X11Workspace(const X11Workspace &) = delete;
    X11Workspace &operator=(const X11Workspace &) = delete;

    qint64 ownPid() const override;
    std::optional<RunningApp> frontmostApplication() const override;
    std::optional<RunningApp> menuBarOwningApplication() const override;
    // One entry per process and application id with a managed window.
    QList<RunningApp> runningApplications() const override;

private:
    bool isForeign(xcb_window_t window) const;
    xcb_window_t lastActiveForeignWindow() const;
    xcb_window_t topmostForeignWindow() const;

    X11Apps m_apps;
    X11ActivationHistory m_history;
};

} // namespace tessary

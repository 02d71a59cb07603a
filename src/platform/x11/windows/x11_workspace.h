#pragma once

#include "core/platform/workspace.h"
#include "platform/x11/windows/x11_apps.h"

#include <QAbstractNativeEventFilter>

namespace tessary {

// Workspace over EWMH. The frontmost application owns _NET_ACTIVE_WINDOW; the
// application the user was last working in is taken from the changes of that
// property seen since construction (the last active window not of this
// process), else from the stacking order. Needs the application object; main
// thread only.
class X11Workspace final : public Workspace, private QAbstractNativeEventFilter {
public:
    explicit X11Workspace(X11Connection &x11);
    ~X11Workspace() override;

    X11Workspace(const X11Workspace &) = delete;
    X11Workspace &operator=(const X11Workspace &) = delete;

    qint64 ownPid() const override;
    std::optional<RunningApp> frontmostApplication() const override;
    std::optional<RunningApp> menuBarOwningApplication() const override;
    // One entry per process and application id with a managed window.
    QList<RunningApp> runningApplications() const override;

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void onActiveWindowChanged();
    bool isForeign(xcb_window_t window) const;
    xcb_window_t topmostForeignWindow() const;

    X11Connection &m_x11;
    X11Apps m_apps;
    xcb_atom_t m_activeWindowAtom;
    xcb_window_t m_lastForeignActive = XCB_WINDOW_NONE;
};

} // namespace tessary

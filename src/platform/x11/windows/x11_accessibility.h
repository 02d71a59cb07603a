#pragma once

#include "core/platform/accessibility.h"
#include "platform/x11/windows/x11_activation_history.h"
#include "platform/x11/windows/x11_apps.h"
#include "platform/x11/windows/x11_frame_moves.h"
#include "platform/x11/windows/x11_window_frames.h"

namespace tessary {

// Accessibility over EWMH. A WindowId is the X id of a managed client window,
// which is also its hash. Frames are converted between root coordinates and
// accessibility coordinates (origin top-left of the primary monitor). X11
// needs no permission to move windows, but moving them takes an EWMH window
// manager: trust is granted while one runs.
class X11Accessibility final : public Accessibility {
public:
    explicit X11Accessibility(X11Connection &x11);

    bool isTrusted() const override;
    bool requestTrust() override;
    void openPrivacySettings() override;

    // The active window when it belongs to `app` (not so while one of our own
    // panels is active), else the window of `app` on the current desktop that
    // was active last, else its topmost visible window there.
    std::optional<WindowId> focusedWindow(const RunningApp &app) const override;
    std::optional<Rect> frame(WindowId window) const override;
    // Un-maximizes the window when needed, then asks the window manager for
    // the frame and follows it there (X11FrameMove); sent once more when the
    // decorations changed meanwhile. Moved means the frame changed at all.
    void setFrame(
        WindowId window, const Rect &frame, const QObject *context, std::function<void(bool moved)> done) override;
    bool isFullScreen(WindowId window) const override;
    quint64 windowHash(WindowId window) const override;

private:
    QPoint primaryOrigin() const;
    bool belongsTo(xcb_window_t window, const RunningApp &app) const;
    // A managed, shown application window of `app` on the current desktop.
    bool isCandidate(
        xcb_window_t window, const RunningApp &app, const QList<xcb_window_t> &managed, quint32 currentDesktop) const;

    X11Connection &m_x11;
    X11Apps m_apps;
    X11WindowFrames m_frames;
    X11FrameMoves m_moves;
    X11ActivationHistory m_history;
};

} // namespace tessary

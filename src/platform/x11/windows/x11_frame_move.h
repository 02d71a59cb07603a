#pragma once

#include "platform/x11/windows/x11_window_frames.h"

#include <QList>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>

namespace tessary {

// One change of a client window's visible frame, carried out at the pace the
// window manager reports: un-maximize first when needed (and let the
// decorations follow), then ask for the frame, then measure again after each
// change the X server reports (ConfigureNotify of the client and of its
// frame, PropertyNotify of the state and the extents) until the window sits
// on the expected frame, has stopped changing, or the phase's deadline has
// passed. When the decorations changed under the request, it is sent once
// more. Nothing waits: the owner feeds the events in through changed(). Main
// thread only.
class X11FrameMove final : public QObject {
public:
    // How long un-maximizing, and then each request, may take before the
    // window manager counts as refusing.
    static constexpr std::chrono::milliseconds phaseDeadline{300};

    X11FrameMove(X11WindowFrames &frames, xcb_window_t window, const QRect &target,
        std::function<void(bool moved)> finished, QObject *parent);
    ~X11FrameMove() override;

    X11FrameMove(const X11FrameMove &) = delete;
    X11FrameMove &operator=(const X11FrameMove &) = delete;

    xcb_window_t window() const { return m_window; }
    // The window manager's frame around the window (the window itself when
    // it is not reparented); valid once started.
    xcb_window_t frameWindow() const { return m_frameWindow; }

    // Measures the window and sends the first request; `finished` may run
    // before this returns. Does nothing once the move has ended.
    void start();
    // The window or its frame changed: measured once the current burst of
    // events is through.
    void changed();
    // Ends at once, as not moved (a newer move of the window takes over).
    void abandon();

private:
    enum class Phase { starting, unmaximizing, moving, finished };
    struct Watched {
        xcb_window_t window;
        uint32_t previousMask;
    };

    void watch(xcb_window_t window, uint32_t mask);
    void unwatch();
    void measureNow();
    void onDeadline();
    void sendRequest(const X11WindowFrames::Placement &now);
    void settled(const X11WindowFrames::Placement &now);
    void finish(bool moved);

    X11WindowFrames &m_frames;
    const xcb_window_t m_window;
    xcb_window_t m_frameWindow = XCB_WINDOW_NONE;
    const QRect m_target;
    std::function<void(bool)> m_finished;
    Phase m_phase = Phase::starting;
    QList<Watched> m_watched;
    SizeHints m_hints;
    X11WindowFrames::Extents m_maximizedDecorations;
    X11WindowFrames::Request m_request;
    int m_requests = 0;
    // The visible frame before the first request, before the current one,
    // and when last measured.
    QRect m_original;
    QRect m_before;
    QRect m_last;
    bool m_measureQueued = false;
    QTimer m_deadline;
    // Runs while the frame has changed recently; a frame off the expected one
    // counts as final once it has stood still this long.
    QTimer m_quiet;
    // Runs while un-maximizing may still change the decorations.
    QTimer m_decorations;
};

} // namespace tessary

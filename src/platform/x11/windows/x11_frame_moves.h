#pragma once

#include "platform/x11/windows/x11_frame_move.h"

#include <QAbstractNativeEventFilter>
#include <QHash>
#include <QObject>
#include <QPointer>

#include <functional>

namespace tessary {

// The frame moves under way, at most one per window, and the X events that
// drive them. Needs the application object; main thread only.
class X11FrameMoves final : public QObject, private QAbstractNativeEventFilter {
public:
    explicit X11FrameMoves(X11WindowFrames &frames);
    ~X11FrameMoves() override;

    X11FrameMoves(const X11FrameMoves &) = delete;
    X11FrameMoves &operator=(const X11FrameMoves &) = delete;

    // Moves `window` so that its visible frame becomes `target` (root
    // coordinates); a move of the same window still under way ends first, as
    // not moved. `done` runs once, later, with whether the window moved,
    // unless `context` is gone by then.
    void move(xcb_window_t window, const QRect &target, const QObject *context, std::function<void(bool moved)> done);

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void changed(xcb_window_t window);

    X11WindowFrames &m_frames;
    const xcb_atom_t m_state;
    const xcb_atom_t m_decorations;
    const xcb_atom_t m_shadow;
    QHash<xcb_window_t, X11FrameMove *> m_moves;
};

} // namespace tessary

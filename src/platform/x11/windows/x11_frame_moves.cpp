#include "platform/x11/windows/x11_frame_moves.h"

#include <QCoreApplication>
#include <QTimer>

#include <utility>

namespace tessary {

X11FrameMoves::X11FrameMoves(X11WindowFrames &frames)
    : m_frames(frames)
    , m_state(frames.x11().atom("_NET_WM_STATE"))
    , m_decorations(frames.x11().atom("_NET_FRAME_EXTENTS"))
    , m_shadow(frames.x11().atom("_GTK_FRAME_EXTENTS"))
{
    QCoreApplication::instance()->installNativeEventFilter(this);
}

X11FrameMoves::~X11FrameMoves()
{
    if (auto *app = QCoreApplication::instance())
        app->removeNativeEventFilter(this);
}

void X11FrameMoves::move(
    xcb_window_t window, const QRect &target, const QObject *context, std::function<void(bool moved)> done)
{
    if (X11FrameMove *older = m_moves.value(window))
        older->abandon();
    auto *move = new X11FrameMove(
        m_frames, window, target,
        [this, window, context = QPointer<const QObject>(context), done = std::move(done)](bool moved) {
            if (X11FrameMove *ended = m_moves.take(window))
                ended->deleteLater();
            if (context)
                done(moved);
        },
        this);
    m_moves.insert(window, move);
    // On the next turn of the event loop: the caller's own reading of the
    // window and this move's reading and request are two short stalls of
    // the loop instead of one long one.
    QTimer::singleShot(0, move, &X11FrameMove::start);
}

bool X11FrameMoves::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (m_moves.isEmpty() || eventType != "xcb_generic_event_t")
        return false;
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    switch (event->response_type & 0x7f) {
    case XCB_CONFIGURE_NOTIFY:
        changed(static_cast<const xcb_configure_notify_event_t *>(message)->window);
        break;
    case XCB_DESTROY_NOTIFY:
        changed(static_cast<const xcb_destroy_notify_event_t *>(message)->window);
        break;
    case XCB_PROPERTY_NOTIFY: {
        const auto *notify = static_cast<const xcb_property_notify_event_t *>(message);
        if (notify->atom == m_state || notify->atom == m_decorations || notify->atom == m_shadow)
            changed(notify->window);
        break;
    }
    default:
        break;
    }
    return false;
}

void X11FrameMoves::changed(xcb_window_t window)
{
    for (X11FrameMove *move : std::as_const(m_moves)) {
        if (move->window() == window || move->frameWindow() == window)
            move->changed();
    }
}

} // namespace tessary

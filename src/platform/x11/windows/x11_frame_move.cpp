#include "platform/x11/windows/x11_frame_move.h"

#include "platform/x11/windows/x11_windows_logging.h"

#include <cstdlib>
#include <utility>

namespace tessary {
namespace {

// Window managers move the frame and resize the client in separate requests;
// under load the gap between them was seen to exceed 20 ms.
constexpr std::chrono::milliseconds stableFor{100};
// The state and the decorations change at different moments, in either
// order; a window manager that decorates both alike leaves the extents as
// they are, hence this shorter bound.
constexpr std::chrono::milliseconds decorationWait{100};

} // namespace

X11FrameMove::X11FrameMove(X11WindowFrames &frames, xcb_window_t window, const QRect &target,
    std::function<void(bool moved)> finished, QObject *parent)
    : QObject(parent)
    , m_frames(frames)
    , m_window(window)
    , m_target(target)
    , m_finished(std::move(finished))
{
    for (QTimer *timer : {&m_deadline, &m_quiet, &m_decorations})
        timer->setSingleShot(true);
    m_deadline.setInterval(phaseDeadline);
    m_quiet.setInterval(stableFor);
    m_decorations.setInterval(decorationWait);
    connect(&m_deadline, &QTimer::timeout, this, &X11FrameMove::onDeadline);
    connect(&m_quiet, &QTimer::timeout, this, &X11FrameMove::measureNow);
    connect(&m_decorations, &QTimer::timeout, this, &X11FrameMove::measureNow);
}

X11FrameMove::~X11FrameMove() { unwatch(); }

void X11FrameMove::start()
{
    if (m_phase != Phase::starting)
        return;
    m_frameWindow = m_frames.topLevel(m_window);
    // Selected before anything is asked of the window manager, so that no
    // change it makes goes unseen.
    watch(m_window, XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
    if (m_frameWindow != m_window)
        watch(m_frameWindow, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    const std::optional<X11WindowFrames::Placement> now = m_frames.measure(m_window);
    if (!now)
        return finish(false);
    m_hints = m_frames.sizeHints(m_window);
    if (!now->maximized)
        return sendRequest(*now);
    m_phase = Phase::unmaximizing;
    m_maximizedDecorations = now->decorations;
    m_frames.sendUnmaximize(m_window);
    m_deadline.start();
    m_decorations.start();
}

void X11FrameMove::changed()
{
    if (m_measureQueued || m_phase == Phase::starting || m_phase == Phase::finished)
        return;
    m_measureQueued = true;
    QTimer::singleShot(0, this, [this] {
        m_measureQueued = false;
        measureNow();
    });
}

void X11FrameMove::abandon() { finish(false); }

void X11FrameMove::watch(xcb_window_t window, uint32_t mask)
{
    xcb_connection_t *connection = m_frames.x11().connection();
    xcb_generic_error_t *error = nullptr;
    auto *attributes
        = xcb_get_window_attributes_reply(connection, xcb_get_window_attributes(connection, window), &error);
    std::free(error);
    if (!attributes)
        return;
    const uint32_t previous = attributes->your_event_mask;
    std::free(attributes);
    const uint32_t wanted = previous | mask;
    xcb_discard_reply(
        connection, xcb_change_window_attributes_checked(connection, window, XCB_CW_EVENT_MASK, &wanted).sequence);
    m_watched.append({window, previous});
}

void X11FrameMove::unwatch()
{
    xcb_connection_t *connection = m_frames.x11().connection();
    for (const Watched &watched : std::as_const(m_watched)) {
        // The window may be gone by now: its error is of no interest.
        xcb_discard_reply(connection,
            xcb_change_window_attributes_checked(connection, watched.window, XCB_CW_EVENT_MASK, &watched.previousMask)
                .sequence);
    }
    if (!m_watched.isEmpty())
        xcb_flush(connection);
    m_watched.clear();
}

void X11FrameMove::measureNow()
{
    if (m_phase == Phase::starting || m_phase == Phase::finished)
        return;
    const std::optional<X11WindowFrames::Placement> now = m_frames.measure(m_window);
    if (!now)
        return finish(false);
    if (m_phase == Phase::unmaximizing) {
        if (now->maximized || (now->decorations == m_maximizedDecorations && m_decorations.isActive()))
            return;
        return sendRequest(*now);
    }
    const QRect visible = now->visible();
    if (visible == m_request.expectedVisible)
        return settled(*now);
    if (visible != m_last) {
        m_last = visible;
        m_quiet.start();
        return;
    }
    if (visible != m_before && !m_quiet.isActive())
        settled(*now);
}

void X11FrameMove::onDeadline()
{
    if (m_phase == Phase::unmaximizing) {
        qCDebug(lcX11Windows) << "window" << Qt::hex << m_window << Qt::dec << "stayed maximized";
        return finish(false);
    }
    const std::optional<X11WindowFrames::Placement> now = m_frames.measure(m_window);
    if (!now)
        return finish(false);
    settled(*now);
}

void X11FrameMove::sendRequest(const X11WindowFrames::Placement &now)
{
    m_phase = Phase::moving;
    m_decorations.stop();
    m_request = X11WindowFrames::request(now, m_hints, m_target);
    m_before = now.visible();
    m_last = m_before;
    if (m_requests++ == 0) {
        m_original = m_before;
        // Where it is already, whether or not its size steps would let it
        // be there (a window manager may have set it there, ignoring them).
        if (m_original == m_request.expectedVisible || m_original == m_target)
            return finish(true);
    }
    m_frames.send(m_window, m_request);
    m_quiet.stop();
    m_deadline.start();
}

void X11FrameMove::settled(const X11WindowFrames::Placement &now)
{
    if (now.visible() != m_request.expectedVisible && m_requests == 1) {
        // The decorations changed under the request (un-maximizing updates
        // them at its own pace): ask again with what the frame is now.
        if (!(X11WindowFrames::request(now, m_hints, m_target) == m_request))
            return sendRequest(now);
    }
    if (now.visible() == m_original)
        qCDebug(lcX11Windows) << "window" << Qt::hex << m_window << Qt::dec << "did not move to" << m_target;
    finish(now.visible() != m_original);
}

void X11FrameMove::finish(bool moved)
{
    if (m_phase == Phase::finished)
        return;
    m_phase = Phase::finished;
    for (QTimer *timer : {&m_deadline, &m_quiet, &m_decorations})
        timer->stop();
    // Before anyone hears of the end, so that a move that follows on this
    // window finds the event masks as they were.
    unwatch();
    m_finished(moved);
}

} // namespace tessary

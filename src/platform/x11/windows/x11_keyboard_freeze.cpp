#include "platform/x11/windows/x11_keyboard_freeze.h"

#include "platform/x11/x11_connection.h"

namespace tessary {

X11KeyboardFreeze::X11KeyboardFreeze(X11Connection &x11)
    : m_x11(x11)
{
}

void X11KeyboardFreeze::frozenBy(xcb_timestamp_t time)
{
    m_frozenAt = time;
    m_takenOver = false;
}

std::optional<xcb_timestamp_t> X11KeyboardFreeze::takeOver()
{
    if (!m_frozenAt)
        return std::nullopt;
    m_takenOver = true;
    return m_frozenAt;
}

void X11KeyboardFreeze::handlerDone()
{
    if (!m_takenOver)
        thaw();
}

void X11KeyboardFreeze::thaw()
{
    // Harmless when nothing is frozen, so a thaw is never skipped for doubt.
    xcb_allow_events(m_x11.connection(), XCB_ALLOW_ASYNC_KEYBOARD, XCB_CURRENT_TIME);
    xcb_flush(m_x11.connection());
    m_frozenAt.reset();
    m_takenOver = false;
}

} // namespace tessary

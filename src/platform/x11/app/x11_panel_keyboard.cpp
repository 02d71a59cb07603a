#include "platform/x11/app/x11_panel_keyboard.h"

#include "platform/x11/windows/x11_keyboard_freeze.h"
#include "platform/x11/x11_connection.h"

#include <QCoreApplication>

#include <cstdlib>
#include <utility>

namespace tessary {

X11PanelKeyboard::X11PanelKeyboard(X11Connection &x11, X11KeyboardFreeze &freeze, QObject *parent)
    : QObject(parent)
    , m_x11(x11)
    , m_freeze(freeze)
{
    m_mapTimeout.setSingleShot(true);
    m_mapTimeout.setInterval(mapTimeoutMs);
    connect(&m_mapTimeout, &QTimer::timeout, this, &X11PanelKeyboard::letKeyboardGo);
    QCoreApplication::instance()->installNativeEventFilter(this);
}

X11PanelKeyboard::~X11PanelKeyboard()
{
    letKeyboardGo();
    if (auto *app = QCoreApplication::instance())
        app->removeNativeEventFilter(this);
}

void X11PanelKeyboard::focusPanel(quintptr window)
{
    letKeyboardGo();
    const xcb_window_t before = inputFocus();
    if (before != XCB_WINDOW_NONE && before != XCB_INPUT_FOCUS_POINTER_ROOT && before != m_x11.root())
        m_previous = before;
    const std::optional<xcb_timestamp_t> press = m_freeze.takeOver();
    m_holdsFreeze = press.has_value();
    m_time = press.value_or(XCB_CURRENT_TIME);
    m_pending = xcb_window_t(window);
    m_mapTimeout.start();
}

void X11PanelKeyboard::panelHiding(quintptr window)
{
    if (m_pending == xcb_window_t(window))
        letKeyboardGo();
    if (m_previous == XCB_WINDOW_NONE || inputFocus() != xcb_window_t(window))
        return;
    // An override-redirect window hands the focus to nobody when it unmaps.
    // The window may be gone by now: its error is dropped, not reported.
    xcb_connection_t *c = m_x11.connection();
    const xcb_void_cookie_t cookie
        = xcb_set_input_focus_checked(c, XCB_INPUT_FOCUS_POINTER_ROOT, m_previous, XCB_CURRENT_TIME);
    xcb_discard_reply(c, cookie.sequence);
    xcb_flush(c);
}

bool X11PanelKeyboard::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (m_pending == XCB_WINDOW_NONE || eventType != "xcb_generic_event_t")
        return false;
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    if ((event->response_type & 0x7f) == XCB_MAP_NOTIFY
        && static_cast<const xcb_map_notify_event_t *>(message)->window == m_pending)
        giveFocus();
    return false;
}

void X11PanelKeyboard::giveFocus()
{
    // The focus request goes out before the keyboard is let go: the server
    // handles both in this order, so every held-back key meets the panel.
    xcb_set_input_focus(m_x11.connection(), XCB_INPUT_FOCUS_POINTER_ROOT, m_pending, m_time);
    letKeyboardGo();
}

void X11PanelKeyboard::letKeyboardGo()
{
    m_mapTimeout.stop();
    m_pending = XCB_WINDOW_NONE;
    if (std::exchange(m_holdsFreeze, false))
        m_freeze.thaw();
    xcb_flush(m_x11.connection());
}

xcb_window_t X11PanelKeyboard::inputFocus() const
{
    xcb_connection_t *c = m_x11.connection();
    auto *reply = xcb_get_input_focus_reply(c, xcb_get_input_focus(c), nullptr);
    if (!reply)
        return XCB_WINDOW_NONE;
    const xcb_window_t focus = reply->focus;
    std::free(reply);
    return focus;
}

} // namespace tessary

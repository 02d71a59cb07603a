#include "platform/x11/windows/x11_mouse_monitor.h"

#include "platform/x11/windows/x11_windows_logging.h"

#include <QCoreApplication>

#include <xcb/xinput.h>

#include <cstdlib>

namespace tessary {

X11MouseMonitor::X11MouseMonitor(X11Connection &x11)
    : m_x11(x11)
{
}

X11MouseMonitor::~X11MouseMonitor()
{
    if (m_installed) {
        if (auto *app = QCoreApplication::instance())
            app->removeNativeEventFilter(this);
    }
}

bool X11MouseMonitor::listen(std::function<void()> onLeftDown, std::function<void()> onLeftUp)
{
    if (!install())
        return false;
    m_listeners.push_back({std::move(onLeftDown), std::move(onLeftUp)});
    return true;
}

bool X11MouseMonitor::install()
{
    if (m_installed)
        return true;
    if (!selectRawButtons())
        return false;
    m_primaryButton = readPrimaryButton();
    QCoreApplication::instance()->installNativeEventFilter(this);
    m_installed = true;
    return true;
}

bool X11MouseMonitor::selectRawButtons()
{
    xcb_connection_t *connection = m_x11.connection();
    const xcb_query_extension_reply_t *extension = xcb_get_extension_data(connection, &xcb_input_id);
    if (!extension || !extension->present) {
        qCWarning(lcX11Windows) << "the X server has no XInput extension";
        return false;
    }
    m_opcode = extension->major_opcode;
    // Qt negotiates XInput on this connection as well; asking again for 2.2
    // (raw events while the window manager holds the pointer) is answered
    // normally and tells whether the server has it.
    xcb_generic_error_t *error = nullptr;
    auto *version = xcb_input_xi_query_version_reply(connection, xcb_input_xi_query_version(connection, 2, 2), &error);
    const bool recent
        = version && (version->major_version > 2 || (version->major_version == 2 && version->minor_version >= 2));
    std::free(version);
    std::free(error);
    if (!recent) {
        qCWarning(lcX11Windows) << "the X server lacks XInput 2.2";
        return false;
    }
    struct {
        xcb_input_event_mask_t header;
        uint32_t bits;
    } mask{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
        XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE};
    error
        = xcb_request_check(connection, xcb_input_xi_select_events_checked(connection, m_x11.root(), 1, &mask.header));
    if (error) {
        qCWarning(lcX11Windows) << "selecting raw button events failed with X error" << error->error_code;
        std::free(error);
        return false;
    }
    return true;
}

uint8_t X11MouseMonitor::readPrimaryButton() const
{
    xcb_connection_t *connection = m_x11.connection();
    auto *reply = xcb_get_pointer_mapping_reply(connection, xcb_get_pointer_mapping(connection), nullptr);
    if (!reply)
        return 1;
    const uint8_t *map = xcb_get_pointer_mapping_map(reply);
    uint8_t primary = 1;
    for (int physical = 0; physical < reply->map_len; ++physical) {
        if (map[physical] == 1) {
            primary = uint8_t(physical + 1);
            break;
        }
    }
    std::free(reply);
    return primary;
}

bool X11MouseMonitor::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    if ((static_cast<const xcb_generic_event_t *>(message)->response_type & 0x7f) == XCB_MAPPING_NOTIFY) {
        if (static_cast<const xcb_mapping_notify_event_t *>(message)->request == XCB_MAPPING_POINTER)
            m_primaryButton = readPrimaryButton();
        return false;
    }
    const auto *event = static_cast<const xcb_ge_generic_event_t *>(message);
    if ((event->response_type & 0x7f) != XCB_GE_GENERIC || event->extension != m_opcode)
        return false;
    if (event->event_type != XCB_INPUT_RAW_BUTTON_PRESS && event->event_type != XCB_INPUT_RAW_BUTTON_RELEASE)
        return false;
    const auto *raw = static_cast<const xcb_input_raw_button_press_event_t *>(message);
    if (raw->detail != m_primaryButton)
        return false;
    const bool down = event->event_type == XCB_INPUT_RAW_BUTTON_PRESS;
    // By index and by copy: a callback may add a listener.
    for (std::size_t i = 0; i < m_listeners.size(); ++i) {
        const std::function<void()> callback = down ? m_listeners[i].onLeftDown : m_listeners[i].onLeftUp;
        if (callback)
            callback();
    }
    return false;
}

} // namespace tessary

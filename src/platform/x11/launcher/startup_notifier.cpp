#include "platform/x11/launcher/startup_notifier.h"

#include "platform/x11/x11_connection.h"

#include <QCoreApplication>

#include <utility>

#define SN_API_NOT_YET_FROZEN
#include <libsn/sn.h>

namespace tessary {

StartupNotifier::StartupNotifier(X11Connection &x11)
    : m_x11(x11)
    , m_display(sn_xcb_display_new(x11.connection(), nullptr, nullptr))
{
    QCoreApplication::instance()->installNativeEventFilter(this);
}

StartupNotifier::~StartupNotifier()
{
    if (QCoreApplication::instance())
        QCoreApplication::instance()->removeNativeEventFilter(this);
    sn_display_unref(m_display);
}

StartupNotifier::Sequence StartupNotifier::begin(const Launch &launch)
{
    SnLauncherContext *context = sn_launcher_context_new(m_display, 0);
    sn_launcher_context_set_name(context, launch.name.constData());
    sn_launcher_context_set_description(context, launch.name.constData());
    sn_launcher_context_set_binary_name(context, launch.binary.constData());
    if (!launch.icon.isEmpty())
        sn_launcher_context_set_icon_name(context, launch.icon.constData());
    if (!launch.wmClass.isEmpty())
        sn_launcher_context_set_wmclass(context, launch.wmClass.constData());
    sn_launcher_context_initiate(context, "tessary", launch.binary.constData(), m_userTime);
    xcb_flush(m_x11.connection());
    return Sequence(context);
}

StartupNotifier::Sequence::Sequence(SnLauncherContext *context)
    : m_context(context)
{
}

StartupNotifier::Sequence::Sequence(Sequence &&other) noexcept
    : m_context(std::exchange(other.m_context, nullptr))
{
}

StartupNotifier::Sequence::~Sequence()
{
    if (m_context)
        sn_launcher_context_unref(m_context);
}

QByteArray StartupNotifier::Sequence::startupId() const
{
    return QByteArray(sn_launcher_context_get_startup_id(m_context));
}

void StartupNotifier::Sequence::cancel() { sn_launcher_context_complete(m_context); }

bool StartupNotifier::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    switch (event->response_type & 0x7f) {
    case XCB_KEY_PRESS:
    case XCB_KEY_RELEASE:
        m_userTime = reinterpret_cast<const xcb_key_press_event_t *>(event)->time;
        break;
    case XCB_BUTTON_PRESS:
    case XCB_BUTTON_RELEASE:
        m_userTime = reinterpret_cast<const xcb_button_press_event_t *>(event)->time;
        break;
    default:
        break;
    }
    return false;
}

} // namespace tessary

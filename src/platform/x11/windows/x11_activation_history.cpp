#include "platform/x11/windows/x11_activation_history.h"

#include "platform/x11/windows/x11_properties.h"

#include <QCoreApplication>

namespace tessary {
namespace {

// Enough for every window a user switches between; older ones fall off.
constexpr qsizetype remembered = 64;

} // namespace

X11ActivationHistory::X11ActivationHistory(X11Connection &x11)
    : m_x11(x11)
    , m_activeWindowAtom(x11.atom("_NET_ACTIVE_WINDOW"))
{
    x11.watchRootProperties();
    QCoreApplication::instance()->installNativeEventFilter(this);
    recordActiveWindow();
}

X11ActivationHistory::~X11ActivationHistory()
{
    if (auto *app = QCoreApplication::instance())
        app->removeNativeEventFilter(this);
}

bool X11ActivationHistory::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    if ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY) {
        const auto *notify = static_cast<const xcb_property_notify_event_t *>(message);
        if (notify->window == m_x11.root() && notify->atom == m_activeWindowAtom)
            recordActiveWindow();
    }
    return false;
}

void X11ActivationHistory::recordActiveWindow()
{
    const QList<xcb_window_t> active = X11Properties::windows(m_x11.connection(), m_x11.root(), m_activeWindowAtom);
    if (active.isEmpty() || active.first() == XCB_WINDOW_NONE)
        return;
    m_recent.removeOne(active.first());
    m_recent.prepend(active.first());
    if (m_recent.size() > remembered)
        m_recent.removeLast();
}

} // namespace tessary

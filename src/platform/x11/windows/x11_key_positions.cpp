#include "platform/x11/windows/x11_key_positions.h"

#include "platform/x11/windows/x11_windows_logging.h"
#include "platform/x11/windows/xkb_key_names.h"

#include <QCoreApplication>
#include <QTimer>

// The XKB header names a member "explicit", a C++ keyword.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

#include <cstdlib>
#include <cstring>

namespace tessary {
namespace {

constexpr uint16_t watchedEvents
    = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY | XCB_XKB_EVENT_TYPE_NAMES_NOTIFY;

QByteArray nameOf(const char (&name)[4]) { return QByteArray(name, int(strnlen(name, 4))); }

} // namespace

X11KeyPositions::X11KeyPositions(X11Connection &x11, QObject *parent)
    : QObject(parent)
    , m_x11(x11)
{
    xcb_connection_t *connection = x11.connection();
    // Qt has enabled XKB on its connection; the selection only adds to Qt's own.
    if (const xcb_query_extension_reply_t *xkb = xcb_get_extension_data(connection, &xcb_xkb_id); xkb && xkb->present) {
        m_xkbEventBase = xkb->first_event;
        xcb_xkb_select_events(connection, XCB_XKB_ID_USE_CORE_KBD, watchedEvents, 0, watchedEvents, 0, 0, nullptr);
    }
    QCoreApplication::instance()->installNativeEventFilter(this);
}

X11KeyPositions::~X11KeyPositions()
{
    if (auto *app = QCoreApplication::instance())
        app->removeNativeEventFilter(this);
}

int X11KeyPositions::keyCode(quint32 nativeKey) const
{
    const QHash<quint32, xcb_keycode_t> &table = positions();
    for (auto it = table.cbegin(); it != table.cend(); ++it) {
        if (it.value() == nativeKey)
            return int(it.key());
    }
    return -1;
}

std::optional<xcb_keycode_t> X11KeyPositions::nativeKey(quint32 keyCode) const
{
    const QHash<quint32, xcb_keycode_t> &table = positions();
    const auto found = table.constFind(keyCode);
    if (found == table.cend())
        return std::nullopt;
    return *found;
}

const QHash<quint32, xcb_keycode_t> &X11KeyPositions::positions() const
{
    if (!m_positions)
        m_positions = readPositions();
    return *m_positions;
}

QHash<quint32, xcb_keycode_t> X11KeyPositions::readPositions() const
{
    QHash<quint32, xcb_keycode_t> table;
    if (!m_xkbEventBase)
        return table;
    xcb_connection_t *connection = m_x11.connection();
    constexpr uint32_t which = XCB_XKB_NAME_DETAIL_KEY_NAMES | XCB_XKB_NAME_DETAIL_KEY_ALIASES;
    xcb_xkb_get_names_reply_t *reply
        = xcb_xkb_get_names_reply(connection, xcb_xkb_get_names(connection, XCB_XKB_ID_USE_CORE_KBD, which), nullptr);
    if (!reply) {
        qCWarning(lcX11Windows) << "the keyboard's key names could not be read";
        return table;
    }
    xcb_xkb_get_names_value_list_t list{};
    xcb_xkb_get_names_value_list_unpack(xcb_xkb_get_names_value_list(reply), reply->nTypes, reply->indicators,
        reply->virtualMods, reply->groupNames, reply->nKeys, reply->nKeyAliases, reply->nRadioGroups, reply->which,
        &list);

    QHash<QByteArray, xcb_keycode_t> keycodes;
    for (int i = 0; i < reply->nKeys; ++i) {
        const QByteArray name = nameOf(list.keyNames[i].name);
        // The first key of a name wins: that is the one keymaps bind symbols to.
        if (!name.isEmpty() && !keycodes.contains(name))
            keycodes.insert(name, xcb_keycode_t(reply->firstKey + i));
    }
    // Keymaps may name a position through an alias ("AC12" for "BKSL").
    for (int i = 0; i < reply->nKeyAliases; ++i) {
        const QByteArray alias = nameOf(list.keyAliases[i].alias);
        const xcb_keycode_t real = keycodes.value(nameOf(list.keyAliases[i].real), 0);
        if (real && !keycodes.contains(alias))
            keycodes.insert(alias, real);
    }
    for (const auto &[code, name] : XkbKeyNames::positions()) {
        const auto found = keycodes.constFind(name);
        if (found != keycodes.cend())
            table.insert(code, *found);
    }
    std::free(reply);
    return table;
}

bool X11KeyPositions::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (eventType != "xcb_generic_event_t" || !m_xkbEventBase)
        return false;
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    if ((event->response_type & 0x7f) != m_xkbEventBase)
        return false;
    // The XKB event's own type follows the response type.
    const uint8_t xkbType = reinterpret_cast<const uint8_t *>(event)[1];
    if (xkbType != XCB_XKB_NEW_KEYBOARD_NOTIFY && xkbType != XCB_XKB_MAP_NOTIFY && xkbType != XCB_XKB_NAMES_NOTIFY)
        return false;
    m_positions.reset();
    if (!m_changePending) {
        // A new keymap arrives as several notices: answer them once, after the last.
        m_changePending = true;
        QTimer::singleShot(0, this, [this] {
            m_changePending = false;
            m_positions.reset();
            Q_EMIT keyboardChanged();
        });
    }
    return false;
}

} // namespace tessary

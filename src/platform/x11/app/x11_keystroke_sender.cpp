#include "platform/x11/app/x11_keystroke_sender.h"

#include "platform/x11/app/paste_keystroke.h"
#include "platform/x11/x11_connection.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QMimeData>

#include <xcb/xcb_icccm.h>
#include <xcb/xcb_keysyms.h>
#include <xcb/xtest.h>

#include <cstdlib>
#include <memory>
#include <utility>
#include <vector>

namespace tessary {

Q_LOGGING_CATEGORY(lcX11Keys, "tessary.x11.keys")

namespace {

constexpr int pollIntervalMs = 20;
constexpr int reactivateIntervalMs = 100;

constexpr xcb_keysym_t keysymControlL = 0xffe3;
constexpr xcb_keysym_t keysymShiftL = 0xffe1;
constexpr xcb_keysym_t keysymInsert = 0xff63;
constexpr xcb_keysym_t keysymV = 0x0076;

template <typename T> using Reply = std::unique_ptr<T, decltype(&std::free)>;
template <typename T> Reply<T> reply(T *raw) { return Reply<T>(raw, &std::free); }

// Copies the clipboard into the primary selection, which the Shift+Insert of
// xterm-like terminals pastes.
void mirrorClipboardIntoPrimary()
{
    QClipboard *clipboard = QGuiApplication::clipboard();
    const QMimeData *source = clipboard->mimeData(QClipboard::Clipboard);
    if (!source || !clipboard->supportsSelection())
        return;
    auto *copy = new QMimeData;
    for (const QString &format : source->formats())
        copy->setData(format, source->data(format));
    clipboard->setMimeData(copy, QClipboard::Selection);
}

} // namespace

X11KeystrokeSender::X11KeystrokeSender(X11Connection &x11, QObject *parent)
    : QObject(parent)
    , m_x11(x11)
{
    m_poll.setInterval(pollIntervalMs);
    connect(&m_poll, &QTimer::timeout, this, &X11KeystrokeSender::onPoll);
}

X11KeystrokeSender::~X11KeystrokeSender() = default;

xcb_window_t X11KeystrokeSender::activeWindow() const
{
    xcb_connection_t *c = m_x11.connection();
    const xcb_atom_t atom = m_x11.atom(QByteArrayLiteral("_NET_ACTIVE_WINDOW"));
    auto property
        = reply(xcb_get_property_reply(c, xcb_get_property(c, 0, m_x11.root(), atom, XCB_ATOM_WINDOW, 0, 1), nullptr));
    if (!property || xcb_get_property_value_length(property.get()) < int(sizeof(xcb_window_t)))
        return XCB_WINDOW_NONE;
    return *static_cast<xcb_window_t *>(xcb_get_property_value(property.get()));
}

bool X11KeystrokeSender::isOwnWindow(xcb_window_t window) const
{
    xcb_connection_t *c = m_x11.connection();
    const xcb_atom_t atom = m_x11.atom(QByteArrayLiteral("_NET_WM_PID"));
    auto property
        = reply(xcb_get_property_reply(c, xcb_get_property(c, 0, window, atom, XCB_ATOM_CARDINAL, 0, 1), nullptr));
    if (!property || xcb_get_property_value_length(property.get()) < int(sizeof(quint32)))
        return false;
    return *static_cast<quint32 *>(xcb_get_property_value(property.get())) == QCoreApplication::applicationPid();
}

void X11KeystrokeSender::rememberTarget()
{
    const xcb_window_t active = activeWindow();
    if (active != XCB_WINDOW_NONE && !isOwnWindow(active))
        m_remembered = active;
}

void X11KeystrokeSender::sendPaste(std::function<void(bool posted)> done)
{
    if (m_done)
        finish(false);
    m_done = std::move(done);
    m_target = m_remembered != XCB_WINDOW_NONE ? m_remembered : activeWindow();
    if (m_target == XCB_WINDOW_NONE) {
        deliver();
        return;
    }
    m_waiting.start();
    m_lastActivationMs = 0;
    activate(m_target);
    m_poll.start();
}

void X11KeystrokeSender::onPoll()
{
    if (hasInputFocus(m_target)) {
        deliver();
        return;
    }
    const qint64 waited = m_waiting.elapsed();
    if (waited >= focusTimeoutMs) {
        qCWarning(lcX11Keys) << "window" << m_target << "did not take the focus; no paste";
        finish(false);
        return;
    }
    if (waited - m_lastActivationMs >= reactivateIntervalMs) {
        m_lastActivationMs = waited;
        activate(m_target);
    }
}

void X11KeystrokeSender::finish(bool posted)
{
    m_poll.stop();
    m_target = XCB_WINDOW_NONE;
    if (auto done = std::exchange(m_done, nullptr))
        done(posted);
}

bool X11KeystrokeSender::hasInputFocus(xcb_window_t window) const
{
    xcb_connection_t *c = m_x11.connection();
    auto focus = reply(xcb_get_input_focus_reply(c, xcb_get_input_focus(c), nullptr));
    if (!focus)
        return false;
    // The focus may sit on a child of the top-level window (a toolkit's focus proxy).
    xcb_window_t current = focus->focus;
    while (current != XCB_WINDOW_NONE && current != XCB_INPUT_FOCUS_POINTER_ROOT && current != m_x11.root()) {
        if (current == window)
            return true;
        auto tree = reply(xcb_query_tree_reply(c, xcb_query_tree(c, current), nullptr));
        if (!tree)
            return false;
        current = tree->parent;
    }
    return false;
}

void X11KeystrokeSender::activate(xcb_window_t window)
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = m_x11.atom(QByteArrayLiteral("_NET_ACTIVE_WINDOW"));
    event.data.data32[0] = 2; // source: a pager, which window managers obey without focus-stealing checks
    event.data.data32[1] = XCB_CURRENT_TIME;
    xcb_send_event(m_x11.connection(), 0, m_x11.root(),
        XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
        reinterpret_cast<const char *>(&event));
    xcb_flush(m_x11.connection());
}

void X11KeystrokeSender::releaseHeldModifiers()
{
    xcb_connection_t *c = m_x11.connection();
    auto keymap = reply(xcb_query_keymap_reply(c, xcb_query_keymap(c), nullptr));
    auto mapping = reply(xcb_get_modifier_mapping_reply(c, xcb_get_modifier_mapping(c), nullptr));
    if (!keymap || !mapping)
        return;
    const xcb_keycode_t *codes = xcb_get_modifier_mapping_keycodes(mapping.get());
    const int count = xcb_get_modifier_mapping_keycodes_length(mapping.get());
    for (int i = 0; i < count; ++i) {
        const xcb_keycode_t code = codes[i];
        if (code != 0 && (keymap->keys[code / 8] & (1 << (code % 8))))
            xcb_test_fake_input(c, XCB_KEY_RELEASE, code, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
    }
}

void X11KeystrokeSender::deliver()
{
    m_poll.stop();
    xcb_connection_t *c = m_x11.connection();

    PasteKeystroke keystroke = PasteKeystroke::controlV;
    if (m_target != XCB_WINDOW_NONE) {
        xcb_icccm_get_wm_class_reply_t wmClass{};
        if (xcb_icccm_get_wm_class_reply(c, xcb_icccm_get_wm_class(c, m_target), &wmClass, nullptr)) {
            keystroke = pasteKeystrokeFor(
                QString::fromLocal8Bit(wmClass.instance_name), QString::fromLocal8Bit(wmClass.class_name));
            xcb_icccm_get_wm_class_reply_wipe(&wmClass);
        }
    }
    if (keystroke == PasteKeystroke::shiftInsertPrimary)
        mirrorClipboardIntoPrimary();

    std::vector<xcb_keysym_t> modifiers;
    xcb_keysym_t key = keysymV;
    switch (keystroke) {
    case PasteKeystroke::controlV:
        modifiers = {keysymControlL};
        break;
    case PasteKeystroke::shiftInsertPrimary:
        modifiers = {keysymShiftL};
        key = keysymInsert;
        break;
    case PasteKeystroke::controlShiftV:
        modifiers = {keysymControlL, keysymShiftL};
        break;
    }

    // The keyboard mapping is read afresh: the user may have switched layouts.
    std::unique_ptr<xcb_key_symbols_t, decltype(&xcb_key_symbols_free)> symbols(
        xcb_key_symbols_alloc(c), &xcb_key_symbols_free);
    const auto keycode = [&](xcb_keysym_t keysym) -> xcb_keycode_t {
        auto codes = reply(xcb_key_symbols_get_keycode(symbols.get(), keysym));
        return codes ? codes.get()[0] : xcb_keycode_t(0);
    };
    std::vector<xcb_keycode_t> modifierCodes;
    for (xcb_keysym_t modifier : modifiers)
        modifierCodes.push_back(keycode(modifier));
    const xcb_keycode_t keyCode = keycode(key);
    bool posted = keyCode != 0;
    for (xcb_keycode_t code : modifierCodes)
        posted = posted && code != 0;

    if (posted) {
        releaseHeldModifiers();
        const auto fake = [c](uint8_t type, xcb_keycode_t code) {
            xcb_test_fake_input(c, type, code, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
        };
        for (xcb_keycode_t code : modifierCodes)
            fake(XCB_KEY_PRESS, code);
        fake(XCB_KEY_PRESS, keyCode);
        fake(XCB_KEY_RELEASE, keyCode);
        for (auto code = modifierCodes.rbegin(); code != modifierCodes.rend(); ++code)
            fake(XCB_KEY_RELEASE, *code);
        xcb_flush(c);
    } else {
        qCWarning(lcX11Keys) << "the keyboard mapping has no key for the paste keystroke";
    }
    finish(posted);
}

} // namespace tessary

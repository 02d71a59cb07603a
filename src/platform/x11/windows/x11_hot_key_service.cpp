#include "platform/x11/windows/x11_hot_key_service.h"

#include "platform/x11/windows/x11_key_positions.h"
#include "platform/x11/windows/x11_windows_logging.h"

#include <QCoreApplication>
#include <QTimer>

#include <xcb/xcb_keysyms.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>

namespace tessary {
namespace {

constexpr uint8_t badAccess = 10;
constexpr xcb_timestamp_t repeatWindowMs = 1000;
constexpr uint16_t coreModifiers = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_LOCK | XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1
    | XCB_MOD_MASK_2 | XCB_MOD_MASK_3 | XCB_MOD_MASK_4 | XCB_MOD_MASK_5;

constexpr quint32 altL = 0xffe9, altR = 0xffea, metaL = 0xffe7, superL = 0xffeb, superR = 0xffec, numLock = 0xff7f;

// The four lock states in grab order; a variant already listed is skipped.
std::array<uint16_t, 4> lockVariants(uint16_t numLockMask)
{
    return {0, XCB_MOD_MASK_LOCK, numLockMask, uint16_t(XCB_MOD_MASK_LOCK | numLockMask)};
}

} // namespace

X11HotKeyService::X11HotKeyService(X11Connection &x11, X11KeyPositions &positions)
    : m_x11(x11)
    , m_freeze(x11)
    , m_positions(positions)
{
    QCoreApplication::instance()->installNativeEventFilter(this);
    m_keyboardChanged
        = QObject::connect(&positions, &X11KeyPositions::keyboardChanged, &positions, [this] { regrabMovedKeys(); });
}

X11HotKeyService::~X11HotKeyService()
{
    // The key positions may outlive this service.
    QObject::disconnect(m_keyboardChanged);
    for (const Grab &grab : std::as_const(m_grabs)) {
        if (grab.keycode)
            ungrab(grab);
    }
    m_freeze.thaw();
    m_x11.sync();
    if (auto *app = QCoreApplication::instance())
        app->removeNativeEventFilter(this);
}

void X11HotKeyService::setPressedHandler(std::function<void(quint32 id)> handler) { m_handler = std::move(handler); }

void X11HotKeyService::setKeyboardChangedHandler(std::function<void()> handler)
{
    m_keyboardChangedHandler = std::move(handler);
}

std::optional<quint64> X11HotKeyService::registerHotKey(const KeyCombo &combo, quint32 id)
{
    const Grab grab = grabFor(combo, id);
    if (!grab.keycode) {
        if (!m_untypable.contains(combo))
            m_untypable.append(combo);
        return std::nullopt;
    }
    for (const Grab &held : std::as_const(m_grabs)) {
        if (held.keycode == grab.keycode && held.modifiers == grab.modifiers)
            return std::nullopt;
    }
    if (!sendGrab(grab))
        return std::nullopt;
    const quint64 reference = m_nextReference++;
    m_grabs.insert(reference, grab);
    m_untypable.removeAll(combo);
    return reference;
}

X11HotKeyService::Grab X11HotKeyService::grabFor(const KeyCombo &combo, quint32 id)
{
    const ModifierMasks masks = currentMasks();
    Grab grab;
    grab.combo = combo;
    grab.keycode = m_positions.nativeKey(combo.keyCode).value_or(0);
    grab.locks = XCB_MOD_MASK_LOCK | masks.numLock;
    grab.id = id;
    if (combo.modifiers & KeyCombo::control)
        grab.modifiers |= XCB_MOD_MASK_CONTROL;
    if (combo.modifiers & KeyCombo::option)
        grab.modifiers |= masks.alt;
    if (combo.modifiers & KeyCombo::shift)
        grab.modifiers |= XCB_MOD_MASK_SHIFT;
    if (combo.modifiers & KeyCombo::command)
        grab.modifiers |= masks.super;
    return grab;
}

bool X11HotKeyService::sendGrab(const Grab &grab)
{
    xcb_connection_t *connection = m_x11.connection();
    const std::array<uint16_t, 4> variants = lockVariants(grab.locks & ~XCB_MOD_MASK_LOCK);
    // All four grabs go out before any answer is awaited: one round trip per combination.
    std::array<xcb_void_cookie_t, 4> cookies;
    for (size_t i = 0; i < variants.size(); ++i) {
        cookies[i] = xcb_grab_key_checked(connection, 0, m_x11.root(), grab.modifiers | variants[i], grab.keycode,
            XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_SYNC);
    }
    bool refused = false;
    for (const xcb_void_cookie_t &cookie : cookies) {
        if (xcb_generic_error_t *error = xcb_request_check(connection, cookie)) {
            if (error->error_code != badAccess)
                qCWarning(lcX11Windows) << "grabbing key" << grab.keycode << "failed with X error" << error->error_code;
            std::free(error);
            refused = true;
        }
    }
    if (refused) {
        // Ungrabbing a variant another client holds leaves that client's grab alone.
        ungrab(grab);
        xcb_flush(connection);
    }
    return !refused;
}

void X11HotKeyService::regrabMovedKeys()
{
    m_masks.reset();
    bool moved = false;
    for (Grab &held : m_grabs) {
        const Grab now = grabFor(held.combo, held.id);
        if (now.keycode == held.keycode && now.modifiers == held.modifiers && now.locks == held.locks)
            continue;
        moved = true;
        if (held.keycode)
            ungrab(held);
        held = now;
        if (held.keycode && !sendGrab(held)) {
            qCWarning(lcX11Windows) << "hot key" << held.combo.display() << "is taken on the new keyboard";
            held.keycode = 0;
        }
    }
    xcb_flush(m_x11.connection());
    const bool freed = std::any_of(m_untypable.cbegin(), m_untypable.cend(),
        [this](const KeyCombo &combo) { return m_positions.nativeKey(combo.keyCode).has_value(); });
    // The server also announces a new keyboard when key events switch between
    // devices (XTest and the real keyboard) with the same keymap; registering
    // everything again then would drop the key press that caused it.
    if ((moved || freed) && m_keyboardChangedHandler)
        m_keyboardChangedHandler();
}

void X11HotKeyService::unregisterHotKey(quint64 reference)
{
    const auto found = m_grabs.constFind(reference);
    if (found == m_grabs.cend())
        return;
    if (found->keycode)
        ungrab(*found);
    m_x11.sync();
    m_grabs.erase(found);
    // Everything is being registered anew: what is refused now will say so.
    if (m_grabs.isEmpty())
        m_untypable.clear();
}

void X11HotKeyService::ungrab(const Grab &grab)
{
    const std::array<uint16_t, 4> locks = lockVariants(grab.locks & ~XCB_MOD_MASK_LOCK);
    for (const uint16_t lock : locks)
        xcb_ungrab_key(m_x11.connection(), grab.keycode, m_x11.root(), grab.modifiers | lock);
}

bool X11HotKeyService::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    const uint8_t type = event->response_type & 0x7f;
    if (type == XCB_KEY_RELEASE) {
        if (static_cast<const xcb_key_release_event_t *>(message)->detail == m_heldKey)
            m_heldKey = 0;
        return false;
    }
    if (type != XCB_KEY_PRESS)
        return false;
    const auto *press = static_cast<const xcb_key_press_event_t *>(message);
    if (press->event != m_x11.root())
        return false;
    // Any press reported to the root came through one of the synchronous
    // grabs and froze the keyboard: whatever happens, it is let go again,
    // after the handler the press queues (so that a panel can take it over).
    m_freeze.frozenBy(press->time);
    bool matched = false;
    for (const Grab &grab : std::as_const(m_grabs)) {
        if (grab.keycode && press->detail == grab.keycode
            && (press->state & coreModifiers & ~grab.locks) == grab.modifiers) {
            // A repeat follows its press within the auto-repeat delay; the
            // bound keeps a lost release from silencing the key for good.
            const bool repeated = m_heldKey == press->detail && press->time - m_heldSince < repeatWindowMs;
            m_heldKey = press->detail;
            m_heldSince = press->time;
            if (m_handler && !repeated)
                m_handler(grab.id);
            matched = true;
            break;
        }
    }
    QTimer::singleShot(0, &m_afterHandlers, [this] { m_freeze.handlerDone(); });
    return matched;
}

const X11HotKeyService::ModifierMasks &X11HotKeyService::currentMasks()
{
    if (!m_masks)
        m_masks = readModifierMasks();
    return *m_masks;
}

X11HotKeyService::ModifierMasks X11HotKeyService::readModifierMasks() const
{
    ModifierMasks masks;
    xcb_connection_t *connection = m_x11.connection();
    auto *reply = xcb_get_modifier_mapping_reply(connection, xcb_get_modifier_mapping(connection), nullptr);
    if (!reply)
        return masks;
    const std::unique_ptr<xcb_key_symbols_t, decltype(&xcb_key_symbols_free)> symbols(
        xcb_key_symbols_alloc(connection), &xcb_key_symbols_free);
    const xcb_keycode_t *keycodes = xcb_get_modifier_mapping_keycodes(reply);
    const int perModifier = reply->keycodes_per_modifier;
    bool altFound = false;
    // Mod1 … Mod5 are modifier indices 3 … 7.
    for (int index = 3; index < 8 && symbols; ++index) {
        const auto mask = uint16_t(1u << index);
        for (int k = 0; k < perModifier; ++k) {
            const xcb_keycode_t keycode = keycodes[index * perModifier + k];
            if (keycode == 0)
                continue;
            const xcb_keysym_t sym = xcb_key_symbols_get_keysym(symbols.get(), keycode, 0);
            if (sym == altL || sym == altR) {
                masks.alt = mask;
                altFound = true;
            } else if (sym == metaL && !altFound) {
                masks.alt = mask;
            } else if (sym == superL || sym == superR) {
                masks.super = mask;
            } else if (sym == numLock) {
                masks.numLock = mask;
            }
        }
    }
    std::free(reply);
    return masks;
}

} // namespace tessary

#include "platform/x11/windows/x11_hot_key_service.h"
#include "platform/x11/windows/x11_key_positions.h"
#include "ui/settings/shortcut_recorder.h"

#include "test_desktop.h"

#include <gtest/gtest.h>

#include <QHash>
#include <QTest>

#include <cstdlib>

namespace tessary {
namespace {

constexpr quint32 controlOption = KeyCombo::control | KeyCombo::option;
constexpr quint32 allFour = KeyCombo::control | KeyCombo::option | KeyCombo::shift | KeyCombo::command;

class HotKeys : public ::testing::Test {
protected:
    HotKeys()
        : positions(desktop.x11())
        , service(desktop.x11(), positions)
    {
        service.setPressedHandler([this](quint32 id) { ++presses[id]; });
    }

    // Presses `keys` with xdotool and waits until `id` fired once more.
    bool pressAndWait(const char *keys, quint32 id)
    {
        const int before = presses.value(id);
        return desktop.xdotool({QStringLiteral("key"), QString::fromLatin1(keys)})
            && TestDesktop::waitFor([&] { return presses.value(id) > before; });
    }

    TestDesktop desktop;
    X11KeyPositions positions;
    X11HotKeyService service;
    QHash<quint32, int> presses;
};

struct ComboCase {
    KeyCombo combo;
    const char *keys;
};

TEST_F(HotKeys, aRegisteredCombinationFiresItsId)
{
    const ComboCase cases[] = {
        {{123, controlOption}, "ctrl+alt+Left"},
        {{49, controlOption}, "ctrl+alt+space"},
        {{9, controlOption}, "ctrl+alt+v"},
        {{111, allFour}, "ctrl+alt+shift+super+F12"},
        {{42, KeyCombo::command}, "super+backslash"},
        {{29, KeyCombo::control | KeyCombo::shift}, "ctrl+shift+0"},
    };
    quint32 id = 1;
    for (const ComboCase &c : cases) {
        SCOPED_TRACE(c.keys);
        ASSERT_TRUE(service.registerHotKey(c.combo, id));
        EXPECT_TRUE(pressAndWait(c.keys, id));
        ++id;
    }
    EXPECT_EQ(presses.size(), int(std::size(cases)));
}

TEST_F(HotKeys, firesWhateverTheLocksAre)
{
    ASSERT_TRUE(service.registerHotKey({123, controlOption}, 7));
    const QStringList locks[] = {{}, {QStringLiteral("Caps_Lock")}, {QStringLiteral("Num_Lock")},
        {QStringLiteral("Caps_Lock"), QStringLiteral("Num_Lock")}};
    for (const QStringList &lock : locks) {
        SCOPED_TRACE(lock.join(QLatin1Char('+')).toStdString());
        for (const QString &key : lock)
            ASSERT_TRUE(desktop.xdotool({QStringLiteral("key"), key}));
        EXPECT_TRUE(pressAndWait("ctrl+alt+Left", 7));
        for (const QString &key : lock)
            ASSERT_TRUE(desktop.xdotool({QStringLiteral("key"), key}));
    }
}

TEST_F(HotKeys, holdingACombinationDownFiresItOnce)
{
    ASSERT_TRUE(service.registerHotKey({123, controlOption}, 1));
    ASSERT_TRUE(service.registerHotKey({124, controlOption}, 2));
    // A second press of a key that is down is an auto-repeat.
    ASSERT_TRUE(desktop.xdotool({QStringLiteral("keydown"), QStringLiteral("ctrl+alt+Left"), QStringLiteral("keydown"),
        QStringLiteral("Left"), QStringLiteral("keydown"), QStringLiteral("Left"), QStringLiteral("keyup"),
        QStringLiteral("ctrl+alt+Left")}));
    ASSERT_TRUE(pressAndWait("ctrl+alt+Right", 2));
    EXPECT_EQ(presses.value(1), 1);

    EXPECT_TRUE(pressAndWait("ctrl+alt+Left", 1));
}

TEST_F(HotKeys, refusesWhatItAlreadyHoldsAndKeysItCannotType)
{
    ASSERT_TRUE(service.registerHotKey({123, controlOption}, 1));
    EXPECT_FALSE(service.registerHotKey({123, controlOption}, 2));
    EXPECT_FALSE(service.registerHotKey({200, controlOption}, 3));
    EXPECT_TRUE(service.registerHotKey({123, controlOption | KeyCombo::shift}, 4));
}

TEST_F(HotKeys, anUnregisteredCombinationNoLongerFiresAndCanBeRegisteredAgain)
{
    const auto reference = service.registerHotKey({0, controlOption}, 1);
    ASSERT_TRUE(reference);
    ASSERT_TRUE(service.registerHotKey({11, controlOption}, 2));
    ASSERT_TRUE(pressAndWait("ctrl+alt+a", 1));

    service.unregisterHotKey(*reference);
    // The second combination fires after the first was pressed: had the first
    // still been grabbed, its press would have been seen by then.
    ASSERT_TRUE(desktop.xdotool({QStringLiteral("key"), QStringLiteral("ctrl+alt+a")}));
    ASSERT_TRUE(pressAndWait("ctrl+alt+b", 2));
    EXPECT_EQ(presses.value(1), 1);

    EXPECT_TRUE(service.registerHotKey({0, controlOption}, 3));
    EXPECT_TRUE(pressAndWait("ctrl+alt+a", 3));
}

// The keyboard mapping of the test server for the life of the object, set as
// users set theirs; the US layout on evdev key codes comes back afterwards.
class KeyboardMapping {
public:
    explicit KeyboardMapping(const QStringList &setxkbmapArguments)
    {
        m_set = TestDesktop::run(QStringLiteral("setxkbmap"), setxkbmapArguments);
    }
    ~KeyboardMapping()
    {
        TestDesktop::run(QStringLiteral("setxkbmap"),
            {QStringLiteral("-layout"), QStringLiteral("us"), QStringLiteral("-variant"), QString(),
                QStringLiteral("-option"), QString()});
    }
    KeyboardMapping(const KeyboardMapping &) = delete;
    KeyboardMapping &operator=(const KeyboardMapping &) = delete;
    bool isSet() const { return m_set; }

private:
    bool m_set = false;
};

using HotKeysOnLayouts = HotKeys;

// X keycode 30 is the key right of Y on the QWERTY row (XKB <AD07>) on evdev
// key codes; xdotool presses a number as that key code, whatever it types.
constexpr const char *physicalU = "ctrl+alt+30";
constexpr quint32 positionOfU = 32;

// The user's way: the recorder on screen takes the physical keys of Ctrl+Alt+U
// as the U position, and the hot key registered from it fires for them.
TEST_F(HotKeysOnLayouts, theRecordedKeyAtAPositionFiresInEveryLayout)
{
    ShortcutRecorder recorder(positions);
    std::optional<KeyCombo> recorded;
    recorder.onChange = [&recorded](const std::optional<KeyCombo> &combo) { recorded = combo; };
    recorder.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&recorder));
    const QStringList layouts[] = {{QStringLiteral("ru,us")}, {QStringLiteral("de")}, {QStringLiteral("fr")},
        {QStringLiteral("-layout"), QStringLiteral("us"), QStringLiteral("-variant"), QStringLiteral("dvorak")},
        {QStringLiteral("gr")}};
    quint32 id = 1;
    for (const QStringList &layout : layouts) {
        SCOPED_TRACE(layout.join(QLatin1Char(' ')).toStdString());
        const KeyboardMapping mapping(layout);
        ASSERT_TRUE(mapping.isSet());
        recorded.reset();
        ASSERT_TRUE(
            desktop.xdotool({QStringLiteral("mousemove"), QStringLiteral("--window"), QString::number(recorder.winId()),
                QStringLiteral("20"), QStringLiteral("10"), QStringLiteral("click"), QStringLiteral("1")}));
        ASSERT_TRUE(TestDesktop::waitFor([&] { return recorder.isRecording(); }));
        ASSERT_TRUE(desktop.xdotool({QStringLiteral("key"), QString::fromLatin1(physicalU)}));
        ASSERT_TRUE(TestDesktop::waitFor([&] { return recorded.has_value(); }));
        EXPECT_EQ(*recorded, (KeyCombo{positionOfU, controlOption}));

        const auto reference = service.registerHotKey(*recorded, id);
        ASSERT_TRUE(reference);
        EXPECT_TRUE(pressAndWait(physicalU, id));
        service.unregisterHotKey(*reference);
        ++id;
    }
}

TEST_F(HotKeysOnLayouts, keepsFiringWhenTheLayoutChangesWhileRegistered)
{
    ASSERT_TRUE(service.registerHotKey({positionOfU, controlOption}, 1));
    const KeyboardMapping russianFirst({QStringLiteral("ru,us")});
    ASSERT_TRUE(russianFirst.isSet());
    EXPECT_TRUE(pressAndWait(physicalU, 1));
    // Switching to the second group, as a layout switcher does.
    const KeyboardMapping usLocked(
        {QStringLiteral("ru,us"), QStringLiteral("-option"), QStringLiteral("grp:lwin_toggle")});
    ASSERT_TRUE(desktop.xdotool({QStringLiteral("key"), QStringLiteral("ISO_Next_Group")}));
    EXPECT_TRUE(pressAndWait(physicalU, 1));
}

TEST_F(HotKeysOnLayouts, aKeyThatMovesOnTheNewKeyboardIsGrabbedWhereItIsNow)
{
    ASSERT_TRUE(service.registerHotKey({123, controlOption}, 1));
    EXPECT_EQ(positions.keyCode(113), 123);
    // The service hears of the change first: it connected first.
    bool changed = false;
    QObject::connect(&positions, &X11KeyPositions::keyboardChanged, [&] { changed = true; });
    // Other key codes: Left is 100 there, not 113.
    const KeyboardMapping xfree86({QStringLiteral("-keycodes"), QStringLiteral("xfree86"), QStringLiteral("us")});
    ASSERT_TRUE(xfree86.isSet());
    ASSERT_TRUE(TestDesktop::waitFor([&] { return changed; }));
    EXPECT_EQ(positions.keyCode(100), 123);
    EXPECT_EQ(positions.keyCode(113), -1);
    EXPECT_TRUE(pressAndWait("ctrl+alt+Left", 1));
}

TEST_F(HotKeysOnLayouts, aKeyTheOldKeyboardLackedIsAnnouncedWhenTheNewOneHasIt)
{
    bool changed = false;
    service.setKeyboardChangedHandler([&] { changed = true; });
    constexpr KeyCombo f12{111, allFour};
    {
        // Key codes of a keyboard without F11 and F12.
        const KeyboardMapping amiga({QStringLiteral("-keycodes"), QStringLiteral("amiga"), QStringLiteral("us")});
        ASSERT_TRUE(amiga.isSet());
        ASSERT_TRUE(TestDesktop::waitFor([&] { return !positions.nativeKey(111); }));
        changed = false;
        EXPECT_FALSE(service.registerHotKey(f12, 1));
    }
    ASSERT_TRUE(TestDesktop::waitFor([&] { return changed; }));
    EXPECT_TRUE(service.registerHotKey(f12, 1));
    EXPECT_TRUE(pressAndWait("ctrl+alt+shift+super+F12", 1));
}

// Another X client, with a connection of its own.
class OtherClient {
public:
    OtherClient()
        : m_connection(xcb_connect(nullptr, nullptr))
        , m_root(xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root)
    {
    }
    ~OtherClient() { xcb_disconnect(m_connection); }
    OtherClient(const OtherClient &) = delete;
    OtherClient &operator=(const OtherClient &) = delete;

    bool grab(xcb_keycode_t keycode, uint16_t modifiers)
    {
        xcb_generic_error_t *error = xcb_request_check(m_connection,
            xcb_grab_key_checked(
                m_connection, 0, m_root, modifiers, keycode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
        std::free(error);
        return !error;
    }

    // Read from the server's own mapping: the sessions differ in key codes
    // (evdev's 113, the built-in xfree86 set's 100).
    xcb_keycode_t keycodeOfLeft() const
    {
        constexpr xcb_keysym_t left = 0xff51;
        const xcb_setup_t *setup = xcb_get_setup(m_connection);
        const int count = setup->max_keycode - setup->min_keycode + 1;
        xcb_get_keyboard_mapping_reply_t *mapping = xcb_get_keyboard_mapping_reply(m_connection,
            xcb_get_keyboard_mapping(m_connection, setup->min_keycode, static_cast<uint8_t>(count)), nullptr);
        const xcb_keysym_t *syms = xcb_get_keyboard_mapping_keysyms(mapping);
        xcb_keycode_t found = 0;
        for (int i = 0; found == 0 && i < count * mapping->keysyms_per_keycode; ++i) {
            if (syms[i] == left)
                found = static_cast<xcb_keycode_t>(setup->min_keycode + i / mapping->keysyms_per_keycode);
        }
        std::free(mapping);
        return found;
    }

private:
    xcb_connection_t *m_connection;
    xcb_window_t m_root;
};

TEST_F(HotKeys, aCombinationAnotherClientHoldsIsRefusedAndLeavesNothingGrabbed)
{
    constexpr uint16_t ctrlAlt = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;
    OtherClient holder;
    // Only the Caps Lock variant is taken: the plain variant is grabbed first
    // and must be given back when the next one fails.
    ASSERT_TRUE(holder.grab(holder.keycodeOfLeft(), ctrlAlt | XCB_MOD_MASK_LOCK));

    EXPECT_FALSE(service.registerHotKey({123, controlOption}, 1));

    OtherClient checker;
    EXPECT_TRUE(checker.grab(checker.keycodeOfLeft(), ctrlAlt));
}

TEST_F(HotKeys, grabsAreReleasedWithTheService)
{
    auto second = std::make_unique<X11HotKeyService>(desktop.x11(), positions);
    ASSERT_TRUE(second->registerHotKey({123, controlOption}, 1));
    OtherClient other;
    EXPECT_FALSE(other.grab(other.keycodeOfLeft(), XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1));
    second.reset();
    EXPECT_TRUE(other.grab(other.keycodeOfLeft(), XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1));
}

} // namespace
} // namespace tessary

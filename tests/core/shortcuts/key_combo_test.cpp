#include "core/shortcuts/key_combo.h"

#include <QJsonDocument>
#include <QSet>

#include <gtest/gtest.h>

namespace tessary {
namespace {

struct DisplayCase {
    std::uint32_t keyCode;
    std::uint32_t modifiers;
    const char16_t *symbols;
    const char16_t *words;
};

class KeyComboDisplay : public ::testing::TestWithParam<DisplayCase> { };

TEST_P(KeyComboDisplay, showsModifiersInFixedOrderThenTheKey)
{
    const DisplayCase &c = GetParam();
    const KeyCombo combo{c.keyCode, c.modifiers};
    EXPECT_EQ(combo.display(KeyCombo::Notation::symbols), QString::fromUtf16(c.symbols));
    EXPECT_EQ(combo.display(KeyCombo::Notation::words), QString::fromUtf16(c.words));
}

INSTANTIATE_TEST_SUITE_P(Table, KeyComboDisplay,
    ::testing::Values(DisplayCase{123, 6144, u"⌃⌥←", u"Ctrl+Alt+Left"},
        DisplayCase{123, 6400, u"⌃⌥⌘←", u"Ctrl+Alt+Super+Left"},
        DisplayCase{0, 4096 + 2048 + 512 + 256, u"⌃⌥⇧⌘A", u"Ctrl+Alt+Shift+Super+A"}, DisplayCase{122, 0, u"F1", u"F1"},
        DisplayCase{111, 0, u"F12", u"F12"}, DisplayCase{49, 6144, u"⌃⌥Space", u"Ctrl+Alt+Space"},
        DisplayCase{51, 6144, u"⌃⌥⌫", u"Ctrl+Alt+Backspace"}, DisplayCase{116, 512, u"⇧⇞", u"Shift+Page Up"},
        DisplayCase{200, 6144, u"⌃⌥Key 200", u"Ctrl+Alt+Key 200"}, DisplayCase{42, 0, u"\\", u"\\"},
        DisplayCase{50, 512, u"⇧`", u"Shift+`"},
        // Bits other than the four modifiers are ignored.
        DisplayCase{36, 6144 | 1, u"⌃⌥↩", u"Ctrl+Alt+Return"}));

TEST(KeyComboNames, tableHasSeventyThreeDistinctCodes)
{
    EXPECT_EQ(KeyCombo::keyNames().size(), 73);
    for (auto it = KeyCombo::keyNames().cbegin(); it != KeyCombo::keyNames().cend(); ++it) {
        const bool long_name = it.value() == QLatin1String("Space") || KeyCombo::isFunctionKey(it.key());
        EXPECT_TRUE(long_name || it.value().size() == 1) << it.value().toStdString();
    }
}

TEST(KeyComboModifiers, eventFlagsMapToTheMask)
{
    using F = KeyCombo::EventFlags;
    EXPECT_EQ(KeyCombo::carbonModifiers(F::command | F::shift), 768u);
    EXPECT_EQ(KeyCombo::carbonModifiers(F::control | F::option | F::command), 6400u);
    EXPECT_EQ(KeyCombo::carbonModifiers(1ull << 16), 0u); // caps lock alone
    EXPECT_EQ(KeyCombo::carbonModifiers(0), 0u);
}

TEST(KeyComboFunctionKeys, onlyTheTwelve)
{
    EXPECT_TRUE(KeyCombo::isFunctionKey(122));
    EXPECT_TRUE(KeyCombo::isFunctionKey(111));
    EXPECT_FALSE(KeyCombo::isFunctionKey(0));
    EXPECT_FALSE(KeyCombo::isFunctionKey(49));
}

std::optional<KeyCombo> decode(const char *json) { return KeyCombo::fromJson(QJsonDocument::fromJson(json).object()); }

TEST(KeyComboJson, roundTripsAndDecodesStrictly)
{
    const KeyCombo combo{9, 6144};
    EXPECT_EQ(KeyCombo::fromJson(combo.toJson()), combo);
    EXPECT_EQ(QJsonDocument(combo.toJson()).toJson(QJsonDocument::Compact), R"({"keyCode":9,"modifiers":6144})");
    EXPECT_EQ(decode(R"({"keyCode":4294967295,"modifiers":0})"), (KeyCombo{4294967295u, 0}));
    for (const char *bad : {R"({"keyCode":9})", R"({"modifiers":6144})", R"({"keyCode":-1,"modifiers":0})",
             R"({"keyCode":4294967296,"modifiers":0})", R"({"keyCode":1.5,"modifiers":0})",
             R"({"keyCode":"9","modifiers":0})"})
        EXPECT_FALSE(decode(bad)) << bad;
}

TEST(KeyComboIdentity, sameKeyOtherModifiersIsAnotherKey)
{
    QSet<KeyCombo> keys{{124, 6144}, {124, 6400}, {124, 6144}};
    EXPECT_EQ(keys.size(), 2);
}

} // namespace
} // namespace tessary

#include "core/app/hot_action.h"

#include <QSet>

#include <gtest/gtest.h>

namespace tessary {
namespace {

TEST(HotAction, rawValuesAreExactCaseNames)
{
    EXPECT_EQ(HotActions::fromRawValue(u"leftHalf"), HotAction::leftHalf);
    EXPECT_FALSE(HotActions::fromRawValue(u"LeftHalf"));
    EXPECT_FALSE(HotActions::fromRawValue(u""));
    for (HotAction action : HotActions::allCases)
        EXPECT_EQ(HotActions::fromRawValue(rawValue(action)), action);
    EXPECT_EQ(rawValue(HotActions::allCases.front()), QStringLiteral("leftHalf"));
    EXPECT_EQ(rawValue(HotActions::allCases.back()), QStringLiteral("clipboard"));
}

TEST(HotAction, defaultCombosArePairwiseDifferent)
{
    QSet<KeyCombo> combos;
    for (HotAction action : HotActions::allCases)
        combos.insert(defaultCombo(action));
    EXPECT_EQ(combos.size(), 20);
    EXPECT_EQ(defaultCombo(HotAction::nextDisplay).display(KeyCombo::Notation::symbols), QString::fromUtf16(u"⌃⌥⌘→"));
    EXPECT_EQ(defaultCombo(HotAction::launcher).display(KeyCombo::Notation::symbols), QString::fromUtf16(u"⌃⌥Space"));
    EXPECT_EQ(defaultCombo(HotAction::restore).display(KeyCombo::Notation::symbols), QString::fromUtf16(u"⌃⌥⌫"));
}

TEST(HotAction, everyLayoutHasItsActionAndOnlyLayoutActionsMapBack)
{
    for (Layout layout : Layouts::allCases) {
        const auto action = HotActions::fromRawValue(rawValue(layout));
        ASSERT_TRUE(action);
        EXPECT_EQ(layoutFor(*action), layout);
        EXPECT_EQ(title(*action), title(layout));
    }
    for (HotAction action : {HotAction::nextDisplay, HotAction::previousDisplay, HotAction::restore,
             HotAction::launcher, HotAction::clipboard})
        EXPECT_FALSE(layoutFor(action)) << rawValue(action).toStdString();
}

TEST(HotAction, titlesAndWindowActions)
{
    EXPECT_EQ(title(HotAction::maximize), QStringLiteral("Maximize"));
    EXPECT_EQ(title(HotAction::launcher), QStringLiteral("Open launcher"));
    EXPECT_EQ(title(HotAction::restore), QStringLiteral("Restore previous size"));
    EXPECT_EQ(HotActions::windowActions.back(), HotAction::restore);
    EXPECT_TRUE(iconName(HotAction::launcher).isEmpty());
    EXPECT_EQ(iconName(HotAction::nextDisplay), QStringLiteral("display.2"));
}

} // namespace
} // namespace tessary

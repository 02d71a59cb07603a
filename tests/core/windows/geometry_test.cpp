#include "core/windows/geometry.h"

#include "window_printers.h"

#include <gtest/gtest.h>

#include <vector>

namespace tessary {
namespace {

using Geometry::target;

// A 1440 × 900 display with a 25 pt menu bar on top.
const Rect visible{0, 25, 1440, 875};

struct TargetCase {
    Layout layout;
    double gap;
    Rect expected;
};

class LayoutTargets : public ::testing::TestWithParam<TargetCase> { };

TEST_P(LayoutTargets, landsOnItsShareOfTheVisibleArea)
{
    const TargetCase &c = GetParam();
    EXPECT_EQ(target(c.layout, visible, c.gap, std::nullopt), c.expected) << rawValue(c.layout).toStdString();
}

// Gap 10: outer edges keep a full gap, shared edges half a gap. Thirds of 1440
// are 480; heights are 875 − 20 (full) or 437.5 − 15 (half).
INSTANTIATE_TEST_SUITE_P(Gap10, LayoutTargets,
    ::testing::Values(TargetCase{Layout::leftHalf, 10, {10, 35, 705, 855}},
        TargetCase{Layout::rightHalf, 10, {725, 35, 705, 855}}, TargetCase{Layout::topHalf, 10, {10, 468, 1420, 423}},
        TargetCase{Layout::bottomHalf, 10, {10, 35, 1420, 423}}, TargetCase{Layout::topLeft, 10, {10, 468, 705, 423}},
        TargetCase{Layout::topRight, 10, {725, 468, 705, 423}}, TargetCase{Layout::bottomLeft, 10, {10, 35, 705, 423}},
        TargetCase{Layout::bottomRight, 10, {725, 35, 705, 423}},
        TargetCase{Layout::firstThird, 10, {10, 35, 465, 855}},
        TargetCase{Layout::centerThird, 10, {485, 35, 470, 855}},
        TargetCase{Layout::lastThird, 10, {965, 35, 465, 855}},
        TargetCase{Layout::firstTwoThirds, 10, {10, 35, 945, 855}},
        TargetCase{Layout::lastTwoThirds, 10, {485, 35, 945, 855}},
        TargetCase{Layout::maximize, 10, {10, 35, 1420, 855}},
        // Without a frame: 60 % × 70 % of the visible area, whatever the gap.
        TargetCase{Layout::center, 10, {288, 156, 864, 613}}));

INSTANTIATE_TEST_SUITE_P(NoGap, LayoutTargets,
    ::testing::Values(TargetCase{Layout::maximize, 0, visible}, TargetCase{Layout::topRight, 0, {720, 463, 720, 438}},
        TargetCase{Layout::lastThird, 0, {960, 25, 480, 875}}));

TEST(GeometryTarget, centerKeepsAFittingWindowsSizeAndShrinksABigOne)
{
    // y of 262.5 rounds away from zero.
    EXPECT_EQ(target(Layout::center, visible, 0, Rect{5, 5, 600, 400}), (Rect{420, 263, 600, 400}));
    EXPECT_EQ(target(Layout::center, visible, 0, Rect{0, 0, 5000, 5000}), visible);
    EXPECT_EQ(target(Layout::center, visible, 20, Rect{0, 0, 5000, 300}), (Rect{20, 313, 1400, 300}));
}

TEST(GeometryRounding, halvesRoundAwayFromZero)
{
    EXPECT_EQ(Geometry::roundPoint(262.5), 263);
    EXPECT_EQ(Geometry::roundPoint(-262.5), -263);
    EXPECT_EQ(Geometry::roundPoint(262.49), 262);
}

struct CycleCase {
    Layout pressed;
    std::optional<Layout> currentlyAt; // none: an unrelated window
    Layout expected;
};

class Cycling : public ::testing::TestWithParam<CycleCase> { };

TEST_P(Cycling, repeatedHalvesWalkTheirCycle)
{
    const CycleCase &c = GetParam();
    const Rect unrelated{100, 100, 300, 200};
    const Rect current = c.currentlyAt ? target(*c.currentlyAt, visible, 8, std::nullopt) : unrelated;
    EXPECT_EQ(Geometry::resolve(c.pressed, current, visible, 8), c.expected);
}

INSTANTIATE_TEST_SUITE_P(BothSides, Cycling,
    ::testing::Values(CycleCase{Layout::leftHalf, std::nullopt, Layout::leftHalf},
        CycleCase{Layout::leftHalf, Layout::leftHalf, Layout::firstTwoThirds},
        CycleCase{Layout::leftHalf, Layout::firstTwoThirds, Layout::firstThird},
        CycleCase{Layout::leftHalf, Layout::firstThird, Layout::leftHalf},
        CycleCase{Layout::rightHalf, std::nullopt, Layout::rightHalf},
        CycleCase{Layout::rightHalf, Layout::rightHalf, Layout::lastTwoThirds},
        CycleCase{Layout::rightHalf, Layout::lastTwoThirds, Layout::lastThird},
        CycleCase{Layout::rightHalf, Layout::lastThird, Layout::rightHalf},
        // A window at the other side's half is unrelated to this cycle.
        CycleCase{Layout::leftHalf, Layout::rightHalf, Layout::leftHalf},
        CycleCase{Layout::maximize, Layout::maximize, Layout::maximize},
        CycleCase{Layout::topHalf, Layout::topHalf, Layout::topHalf}));

TEST(GeometryResolve, withoutAFrameThePressedLayoutApplies)
{
    EXPECT_EQ(Geometry::resolve(Layout::leftHalf, std::nullopt, visible, 0), Layout::leftHalf);
}

TEST(GeometryResolve, toleranceIsSixPointsInclusive)
{
    const Rect half = target(Layout::leftHalf, visible, 0, std::nullopt);
    Rect off6 = half;
    off6.x += 6;
    Rect off6_5 = half;
    off6_5.width += 6.5;
    EXPECT_EQ(Geometry::resolve(Layout::leftHalf, off6, visible, 0), Layout::firstTwoThirds);
    EXPECT_EQ(Geometry::resolve(Layout::leftHalf, off6_5, visible, 0), Layout::leftHalf);
    EXPECT_TRUE(Geometry::approx(half, off6, 6));
    EXPECT_FALSE(Geometry::approx(half, off6_5, 6));
}

TEST(GeometryScreenIndex, largestOverlapWinsAndTiesGoToTheEarlierDisplay)
{
    const std::vector<Rect> screens = {{0, 0, 1000, 800}, {1000, 0, 1000, 800}, {2000, 0, 800, 600}};
    EXPECT_EQ(Geometry::screenIndex({900, 100, 300, 300}, screens), 1u); // 100 vs 200 wide
    EXPECT_EQ(Geometry::screenIndex({800, 100, 400, 300}, screens), 0u); // 200 vs 200: earlier
    EXPECT_EQ(Geometry::screenIndex({2100, 50, 100, 100}, screens), 2u);
    // Touching is no overlap: the window right of display 0 is on display 1.
    EXPECT_EQ(Geometry::screenIndex({1000, 0, 10, 10}, screens), 1u);
}

TEST(GeometryScreenIndex, offScreenWindowsGoToTheNearestCentre)
{
    const std::vector<Rect> screens = {{0, 0, 1000, 800}, {1000, 0, 1000, 800}};
    EXPECT_EQ(Geometry::screenIndex({2500, 300, 100, 100}, screens), 1u);
    EXPECT_EQ(Geometry::screenIndex({-900, 300, 100, 100}, screens), 0u);
    // Equidistant from both centres: the earlier display.
    EXPECT_EQ(Geometry::screenIndex({950, 2000, 100, 100}, screens), 0u);
    EXPECT_EQ(Geometry::screenIndex({50, 50, 10, 10}, std::vector<Rect>{}), 0u);
}

TEST(GeometryRemap, keepsRelativeSizeAndPositionOnUnequalDisplays)
{
    const Rect from{0, 0, 1920, 1080};
    const Rect to{1920, 0, 1440, 900};
    EXPECT_EQ(Geometry::remap({960, 0, 960, 1080}, from, to), (Rect{2640, 0, 720, 900}));
    EXPECT_EQ(Geometry::remap({480, 270, 960, 540}, from, to), (Rect{2280, 225, 720, 450}));
    // Back again is the original frame.
    EXPECT_EQ(Geometry::remap({2640, 0, 720, 900}, to, from), (Rect{960, 0, 960, 1080}));
}

TEST(GeometryRemap, neverExceedsOrLeavesTheDestination)
{
    const Rect from{0, 0, 1000, 1000};
    const Rect to{1000, 0, 500, 500};
    // Larger than its own area and hanging off it to the right.
    EXPECT_EQ(Geometry::remap({900, -50, 1200, 300}, from, to), (Rect{1000, 0, 500, 150}));
}

TEST(GeometryRemap, anEmptySourceAreaLeavesTheFrameUntouched)
{
    const Rect frame{10.4, 20.6, 30.2, 40.8};
    EXPECT_EQ(Geometry::remap(frame, {0, 0, 0, 100}, {0, 0, 100, 100}), frame);
}

TEST(GeometryFlip, convertsBetweenConventionsAndRoundTrips)
{
    const Rect desktop{10, 20, 300, 200};
    EXPECT_EQ(Geometry::flip(desktop, 900), (Rect{10, 680, 300, 200}));
    EXPECT_EQ(Geometry::flip(Geometry::flip(desktop, 900), 900), desktop);
}

TEST(LayoutRawValues, exactNamesOnly)
{
    for (Layout layout : Layouts::allCases)
        EXPECT_EQ(Layouts::fromRawValue(rawValue(layout)), layout);
    EXPECT_FALSE(Layouts::fromRawValue(u"LeftHalf"));
    EXPECT_FALSE(Layouts::fromRawValue(u""));
}

} // namespace
} // namespace tessary

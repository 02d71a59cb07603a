#include "core/windows/window_manager.h"

#include "platform/fake/windows/fake_desktop.h"

#include "completed_operations.h"
#include "window_printers.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <ostream>

namespace tessary {
namespace {

using Failure = WindowManager::Failure;

// Desktop coordinates. The primary display is 1920 × 1080 with a 25-point bar
// on top; the second, 1440 × 900, sits to its right, top edges aligned (as in
// the X test session); the third repeats the second further right.
const ScreenInfo primary{{0, 0, 1920, 1080}, {0, 0, 1920, 1055}};
const ScreenInfo second{{1920, 180, 1440, 900}, {1920, 180, 1440, 900}};
const ScreenInfo third{{3360, 180, 1440, 900}, {3360, 180, 1440, 900}};

const RunningApp editor{812, QStringLiteral("editor"), QStringLiteral("Editor")};

// Window frames below are in accessibility coordinates (top-left origin, y down).
const Rect unsnapped{100, 100, 800, 600};

class WindowManagerTest : public ::testing::Test {
protected:
    WindowManagerTest() { desktop.setScreens({primary, second}); }

    FakeDesktop desktop;
    WindowManager manager{desktop, desktop, desktop};
};

struct ApplyCase {
    const char *name;
    friend void PrintTo(const ApplyCase &c, std::ostream *os) { *os << c.name; }
    Rect window;
    Layout pressed;
    double gap;
    Rect expected;
    Layout applied;
};

class ApplyLandsOnTarget : public WindowManagerTest, public ::testing::WithParamInterface<ApplyCase> { };

TEST_P(ApplyLandsOnTarget, inTheVisibleAreaOfTheWindowsDisplay)
{
    const ApplyCase &c = GetParam();
    const WindowId w = desktop.addWindow(editor, c.window);
    manager.setGap(c.gap);
    EXPECT_EQ(applied(manager, c.pressed, w, editor.pid), WindowManager::ApplyResult(c.applied));
    EXPECT_EQ(desktop.windowFrame(w), c.expected);
}

INSTANTIATE_TEST_SUITE_P(Cases, ApplyLandsOnTarget,
    ::testing::Values(
        // Below the primary display's bar: desktop y 0..1055 is y 25..1080 here.
        ApplyCase{"leftHalfOnPrimary", unsnapped, Layout::leftHalf, 0, {0, 25, 960, 1055}, Layout::leftHalf},
        ApplyCase{"rightHalfOnSecondWithGap", {2000, 100, 600, 400}, Layout::rightHalf, 10, {2645, 10, 705, 880},
            Layout::rightHalf},
        ApplyCase{
            "centerOnSecondKeepsSize", {2000, 100, 600, 400}, Layout::center, 0, {2340, 250, 600, 400}, Layout::center},
        ApplyCase{"straddlerGoesToLargerOverlapPrimary", {1700, 100, 400, 300}, Layout::maximize, 0,
            {0, 25, 1920, 1055}, Layout::maximize},
        ApplyCase{"straddlerGoesToLargerOverlapSecond", {1800, 100, 400, 300}, Layout::maximize, 0,
            {1920, 0, 1440, 900}, Layout::maximize}),
    [](const auto &p) { return std::string(p.param.name); });

// A window that sizes in steps settles short of its targets, here by more
// than the cycling tolerance in at least one dimension, and still cycles.
struct SteppedCycleCase {
    const char *name;
    friend void PrintTo(const SteppedCycleCase &c, std::ostream *os) { *os << c.name; }
    Rect window;
    QSizeF step;
    double gap;
    Layout pressed;
    std::array<Layout, 4> applied;
};

class SteppedWindowCycles : public WindowManagerTest, public ::testing::WithParamInterface<SteppedCycleCase> { };

TEST_P(SteppedWindowCycles, throughEveryStep)
{
    const SteppedCycleCase &c = GetParam();
    const WindowId w = desktop.addWindow(editor, c.window);
    desktop.setSizeStep(w, c.step);
    manager.setGap(c.gap);
    for (const Layout expected : c.applied)
        EXPECT_EQ(applied(manager, c.pressed, w, editor.pid), WindowManager::ApplyResult(expected));
}

const std::array<Layout, 4> leftCycle{Layout::leftHalf, Layout::firstTwoThirds, Layout::firstThird, Layout::leftHalf};
const std::array<Layout, 4> rightCycle{Layout::rightHalf, Layout::lastTwoThirds, Layout::lastThird, Layout::rightHalf};

INSTANTIATE_TEST_SUITE_P(Cases, SteppedWindowCycles,
    ::testing::Values(
        // Every step 1055 high becomes 1040.
        SteppedCycleCase{"tallRows", unsnapped, {1, 16}, 0, Layout::leftHalf, leftCycle},
        // Widths 945, 1265 and 625 become 925, 1250 and the exact 625.
        SteppedCycleCase{"wideColumnsWithGap", unsnapped, {25, 1}, 10, Layout::rightHalf, rightCycle},
        // Widths 720, 960 and 480 on the second display become 700, 950 and 450.
        SteppedCycleCase{"onTheSecondDisplay", {2000, 100, 600, 400}, {50, 1}, 0, Layout::leftHalf, leftCycle}),
    [](const auto &p) { return std::string(p.param.name); });

// What the user does to a stepped window, settled at the left half (0, 25,
// 960, 1040), before pressing the left half again.
struct InterruptedCycleCase {
    const char *name;
    friend void PrintTo(const InterruptedCycleCase &c, std::ostream *os) { *os << c.name; }
    Rect placed;
    Layout applied;
};

class InterruptedCycle : public WindowManagerTest, public ::testing::WithParamInterface<InterruptedCycleCase> { };

TEST_P(InterruptedCycle, startsAfreshOnceTheUserMovedTheWindow)
{
    const InterruptedCycleCase &c = GetParam();
    const WindowId w = desktop.addWindow(editor, unsnapped);
    desktop.setSizeStep(w, {1, 16});
    ASSERT_TRUE(applied(manager, Layout::leftHalf, w, editor.pid).succeeded());
    ASSERT_EQ(desktop.windowFrame(w), (Rect{0, 25, 960, 1040}));

    desktop.placeWindow(w, c.placed);
    EXPECT_EQ(applied(manager, Layout::leftHalf, w, editor.pid), WindowManager::ApplyResult(c.applied));
}

INSTANTIATE_TEST_SUITE_P(Cases, InterruptedCycle,
    ::testing::Values(InterruptedCycleCase{"shrunkByOneRow", {0, 25, 960, 1024}, Layout::leftHalf},
        // As close as cycling ever asks a window to be to a step.
        InterruptedCycleCase{"nudgedWithinTheTolerance", {6, 19, 954, 1046}, Layout::firstTwoThirds},
        InterruptedCycleCase{"nudgedBeyondIt", {7, 25, 960, 1040}, Layout::leftHalf}),
    [](const auto &p) { return std::string(p.param.name); });

TEST_F(WindowManagerTest, anotherWindowWhereASteppedOneSettledIsNotOnTheCycle)
{
    const WindowId stepped = desktop.addWindow(editor, unsnapped);
    desktop.setSizeStep(stepped, {1, 16});
    ASSERT_TRUE(applied(manager, Layout::leftHalf, stepped, editor.pid).succeeded());

    const WindowId other = desktop.addWindow(editor, desktop.windowFrame(stepped));
    EXPECT_EQ(applied(manager, Layout::leftHalf, other, editor.pid), WindowManager::ApplyResult(Layout::leftHalf));
}

// While a move is under way the window still shows its old frame: a newer
// snap starts from the frame being written and takes over.
TEST_F(WindowManagerTest, aSnapPressedAgainWhileTheFirstIsUnderWayCyclesFromItAndWins)
{
    const WindowId w = desktop.addWindow(editor, unsnapped);
    desktop.setHoldsFrameWrites(true);
    QList<WindowManager::ApplyResult> results;
    const auto record = [&results](const WindowManager::ApplyResult &result) { results.append(result); };
    manager.apply(Layout::leftHalf, w, editor.pid, record);
    manager.apply(Layout::leftHalf, w, editor.pid, record);
    EXPECT_EQ(desktop.heldFrameWrites(), 1);
    EXPECT_TRUE(results.isEmpty());

    desktop.finishFrameWrites();
    EXPECT_EQ(results, QList<WindowManager::ApplyResult>{Layout::firstTwoThirds});
    EXPECT_EQ(desktop.windowFrame(w), (Rect{0, 25, 1280, 1055}));
    desktop.setHoldsFrameWrites(false);
    EXPECT_EQ(applied(manager, Layout::leftHalf, w, editor.pid), WindowManager::ApplyResult(Layout::firstThird));
    EXPECT_EQ(restored(manager), std::nullopt);
    EXPECT_EQ(desktop.windowFrame(w), unsnapped);
}

TEST_F(WindowManagerTest, aDisplayMoveWhileASnapIsUnderWayCarriesTheSnapsTarget)
{
    const WindowId w = desktop.addWindow(editor, unsnapped);
    desktop.setHoldsFrameWrites(true);
    manager.apply(Layout::leftHalf, w, editor.pid,
        [](const WindowManager::ApplyResult &) { ADD_FAILURE() << "the display move took over"; });
    bool moved = false;
    manager.moveToDisplay(true, [&moved](std::optional<Failure> failure) { moved = !failure; });
    desktop.finishFrameWrites();
    EXPECT_TRUE(moved);
    EXPECT_EQ(desktop.windowFrame(w), (Rect{1920, 0, 720, 900}));
}

// A display of twice the density, twice the size: every gap, step and
// tolerance counts in points, so each frame is exactly twice the one on a
// display of single density.
class DoubleDensity : public ::testing::TestWithParam<Layout> { };

TEST_P(DoubleDensity, snapsAsASingleDensityDisplayDoes)
{
    const auto snap = [](double scale, const Rect &nudge) {
        const auto doubled = [scale](const Rect &r) {
            return Rect{r.x * scale, r.y * scale, r.width * scale, r.height * scale};
        };
        FakeDesktop desktop;
        desktop.setScreens({{doubled({0, 0, 1440, 900}), doubled({0, 0, 1440, 876}), scale}});
        WindowManager manager(desktop, desktop, desktop);
        manager.setGap(8);
        const WindowId w = desktop.addWindow(editor, doubled({100, 100, 800, 600}));
        QList<Rect> frames;
        for (int press = 0; press < 3; ++press) {
            EXPECT_TRUE(applied(manager, GetParam(), w, editor.pid).succeeded());
            frames.append(desktop.windowFrame(w));
            // A window that settles off its target by up to the cycling
            // tolerance still counts as there.
            const Rect f = desktop.windowFrame(w);
            desktop.placeWindow(w, {f.x + nudge.x, f.y + nudge.y, f.width + nudge.width, f.height + nudge.height});
        }
        for (Rect &frame : frames)
            frame = {frame.x / scale, frame.y / scale, frame.width / scale, frame.height / scale};
        return frames;
    };
    EXPECT_EQ(snap(2, {12, 0, -12, 0}), snap(1, {6, 0, -6, 0}));
}

INSTANTIATE_TEST_SUITE_P(Layouts, DoubleDensity,
    ::testing::Values(Layout::leftHalf, Layout::rightHalf, Layout::topLeft, Layout::maximize, Layout::center),
    [](const auto &p) { return rawValue(p.param).toStdString(); });

struct ApplyCheckCase {
    const char *name;
    friend void PrintTo(const ApplyCheckCase &c, std::ostream *os) { *os << c.name; }
    bool fullScreen;
    bool frameReadable;
    bool displays;
    Failure expected;
};

class ApplyOrderOfChecks : public WindowManagerTest, public ::testing::WithParamInterface<ApplyCheckCase> { };

TEST_P(ApplyOrderOfChecks, reportsTheFirstUnmetConditionAndWritesNothing)
{
    const ApplyCheckCase &c = GetParam();
    const WindowId w = desktop.addWindow(editor, unsnapped);
    desktop.setFullScreen(w, c.fullScreen);
    desktop.setFrameReadable(w, c.frameReadable);
    if (!c.displays)
        desktop.setScreens({});
    EXPECT_EQ(applied(manager, Layout::leftHalf, w, editor.pid), WindowManager::ApplyResult(c.expected));
    EXPECT_EQ(desktop.frameWrites(w), 0);
}

INSTANTIATE_TEST_SUITE_P(Cases, ApplyOrderOfChecks,
    ::testing::Values(ApplyCheckCase{"fullScreenBeforeAnythingElse", true, false, false, Failure::fullScreen},
        ApplyCheckCase{"unreadableFrameBeforeDisplays", false, false, false, Failure::cannotMove},
        ApplyCheckCase{"noDisplays", false, true, false, Failure::noWindow}),
    [](const auto &p) { return std::string(p.param.name); });

TEST_F(WindowManagerTest, aWindowThatRefusesTheMoveKeepsItsRecordedOriginal)
{
    const WindowId w = desktop.addWindow(editor, unsnapped);
    desktop.setAcceptsMoves(w, false);
    EXPECT_EQ(applied(manager, Layout::leftHalf, w, editor.pid), WindowManager::ApplyResult(Failure::cannotMove));

    desktop.setAcceptsMoves(w, true);
    EXPECT_TRUE(applied(manager, Layout::rightHalf, w, editor.pid).succeeded());
    EXPECT_EQ(restored(manager), std::nullopt);
    EXPECT_EQ(desktop.windowFrame(w), unsnapped);
}

TEST_F(WindowManagerTest, restoreReturnsToTheFrameBeforeTheFirstSnapOnlyOnce)
{
    const WindowId w = desktop.addWindow(editor, unsnapped);
    EXPECT_EQ(restored(manager), std::nullopt);
    EXPECT_EQ(desktop.frameWrites(w), 0);

    applied(manager, Layout::leftHalf, w, editor.pid);
    applied(manager, Layout::topHalf, w, editor.pid);

    EXPECT_EQ(restored(manager), std::nullopt);
    EXPECT_EQ(desktop.windowFrame(w), unsnapped);
    const int writes = desktop.frameWrites(w);

    EXPECT_EQ(restored(manager), std::nullopt);
    EXPECT_EQ(desktop.frameWrites(w), writes);
    EXPECT_EQ(desktop.windowFrame(w), unsnapped);
}

TEST_F(WindowManagerTest, restoreActsOnTheFrontWindowOnly)
{
    const WindowId a = desktop.addWindow(editor, unsnapped);
    applied(manager, Layout::leftHalf, a, editor.pid);
    const WindowId b = desktop.addWindow(editor, {50, 60, 700, 500});
    applied(manager, Layout::rightHalf, b, editor.pid);
    const Rect bSnapped = desktop.windowFrame(b);

    desktop.activate(a);
    EXPECT_EQ(restored(manager), std::nullopt);
    EXPECT_EQ(desktop.windowFrame(a), unsnapped);
    EXPECT_EQ(desktop.windowFrame(b), bSnapped);
}

TEST_F(WindowManagerTest, restoreWhileOwnPanelIsActiveActsOnTheLastOtherWindow)
{
    const WindowId w = desktop.addWindow(editor, unsnapped);
    applied(manager, Layout::leftHalf, w, editor.pid);
    desktop.activateOwnApp();
    EXPECT_EQ(restored(manager), std::nullopt);
    EXPECT_EQ(desktop.windowFrame(w), unsnapped);
}

TEST_F(WindowManagerTest, aRefusedRestoreStillForgetsTheOriginal)
{
    const WindowId w = desktop.addWindow(editor, unsnapped);
    applied(manager, Layout::leftHalf, w, editor.pid);
    const Rect snapped = desktop.windowFrame(w);
    desktop.setAcceptsMoves(w, false);
    desktop.setAcceptsResizes(w, false);
    EXPECT_EQ(restored(manager), Failure::cannotMove);

    desktop.setAcceptsMoves(w, true);
    desktop.setAcceptsResizes(w, true);
    EXPECT_EQ(restored(manager), std::nullopt);
    EXPECT_EQ(desktop.windowFrame(w), snapped);
}

// Operations that find the front window themselves.
struct FrontOperation {
    const char *name;
    friend void PrintTo(const FrontOperation &c, std::ostream *os) { *os << c.name; }
    std::function<std::optional<Failure>(WindowManager &)> run;
};

const FrontOperation frontOperations[] = {
    {"restore", [](WindowManager &m) { return restored(m); }},
    {"nextDisplay", [](WindowManager &m) { return movedToDisplay(m, true); }},
    {"previousDisplay", [](WindowManager &m) { return movedToDisplay(m, false); }},
};

struct FrontCheckCase {
    const char *name;
    friend void PrintTo(const FrontCheckCase &c, std::ostream *os) { *os << c.name; }
    std::function<void(FakeDesktop &)> arrange;
    Failure expected;
};

class FrontOperationChecks : public WindowManagerTest,
                             public ::testing::WithParamInterface<std::tuple<FrontOperation, FrontCheckCase>> { };

TEST_P(FrontOperationChecks, failWithTheirFixedReason)
{
    const auto &[operation, c] = GetParam();
    c.arrange(desktop);
    EXPECT_EQ(operation.run(manager), c.expected);
}

INSTANTIATE_TEST_SUITE_P(Cases, FrontOperationChecks,
    ::testing::Combine(::testing::ValuesIn(frontOperations),
        ::testing::Values(FrontCheckCase{"untrustedEvenWithoutAWindow", [](FakeDesktop &d) { d.setTrusted(false); },
                              Failure::noPermission},
            FrontCheckCase{"nothingInFront", [](FakeDesktop &) {}, Failure::noWindow},
            FrontCheckCase{"onlyThisProcessIsActive", [](FakeDesktop &d) { d.activateOwnApp(); }, Failure::noWindow},
            FrontCheckCase{"thisProcessAlsoOwnsTheMenuBar",
                [](FakeDesktop &d) {
                    d.addWindow(editor, unsnapped);
                    d.activateOwnApp();
                    d.setMenuBarOwner(d.ownApp());
                },
                Failure::noWindow},
            FrontCheckCase{"frontAppHasNoWindow", [](FakeDesktop &d) { d.closeWindow(d.addWindow(editor, unsnapped)); },
                Failure::noWindow})),
    [](const auto &p) { return std::string(std::get<0>(p.param).name) + "_" + std::get<1>(p.param).name; });

// Applying refuses a full-screen window with its own reason; moving it does not.
TEST_F(WindowManagerTest, displayMoveOfAFullScreenUnreadableOrRefusingWindowCannotMove)
{
    const WindowId w = desktop.addWindow(editor, unsnapped);
    desktop.setFullScreen(w, true);
    EXPECT_EQ(movedToDisplay(manager, true), Failure::cannotMove);
    EXPECT_EQ(desktop.frameWrites(w), 0);
    desktop.setFullScreen(w, false);
    desktop.setFrameReadable(w, false);
    EXPECT_EQ(movedToDisplay(manager, true), Failure::cannotMove);
    desktop.setFrameReadable(w, true);
    desktop.setAcceptsMoves(w, false);
    EXPECT_EQ(movedToDisplay(manager, true), Failure::cannotMove);
}

TEST_F(WindowManagerTest, withOneDisplayDisplayMovesSucceedInPlace)
{
    desktop.setScreens({primary});
    const WindowId w = desktop.addWindow(editor, unsnapped);
    EXPECT_EQ(movedToDisplay(manager, true), std::nullopt);
    EXPECT_EQ(movedToDisplay(manager, false), std::nullopt);
    EXPECT_EQ(desktop.frameWrites(w), 0);
}

// The primary's visible area (1920 × 1055) and the others' (1440 × 900): the
// window keeps its relative size and place, so it comes back exactly.
const Rect onSecond{1995, 64, 600, 512};
const Rect onThird{3435, 64, 600, 512};

struct DisplayMoveCase {
    const char *name;
    friend void PrintTo(const DisplayMoveCase &c, std::ostream *os) { *os << c.name; }
    Rect from;
    bool next;
    Rect expected;
};

class DisplayMoves : public WindowManagerTest, public ::testing::WithParamInterface<DisplayMoveCase> { };

TEST_P(DisplayMoves, carryTheWindowAndWrapAround)
{
    const DisplayMoveCase &c = GetParam();
    desktop.setScreens({primary, second, third});
    const WindowId w = desktop.addWindow(editor, c.from);
    EXPECT_EQ(movedToDisplay(manager, c.next), std::nullopt);
    EXPECT_EQ(desktop.windowFrame(w), c.expected);
}

INSTANTIATE_TEST_SUITE_P(Cases, DisplayMoves,
    ::testing::Values(DisplayMoveCase{"nextFromFirst", unsnapped, true, onSecond},
        DisplayMoveCase{"previousFromFirstGoesToThird", unsnapped, false, onThird},
        DisplayMoveCase{"nextFromThirdGoesToFirst", onThird, true, unsnapped},
        DisplayMoveCase{"previousFromThird", onThird, false, onSecond}),
    [](const auto &p) { return std::string(p.param.name); });

TEST_F(WindowManagerTest, displayMovesNeitherRecordNorForgetOriginals)
{
    const WindowId w = desktop.addWindow(editor, unsnapped);
    movedToDisplay(manager, true);
    const int writes = desktop.frameWrites(w);
    EXPECT_EQ(restored(manager), std::nullopt);
    EXPECT_EQ(desktop.frameWrites(w), writes);

    applied(manager, Layout::leftHalf, w, editor.pid);
    movedToDisplay(manager, true);
    EXPECT_EQ(restored(manager), std::nullopt);
    EXPECT_EQ(desktop.windowFrame(w), onSecond);
}

} // namespace
} // namespace tessary

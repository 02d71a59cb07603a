#include "core/windows/drag_snapper.h"

#include "core/windows/window_manager.h"
#include "platform/fake/windows/fake_desktop.h"

#include "completed_operations.h"
#include "window_printers.h"

#include <QTest>

#include <gtest/gtest.h>

#include <ostream>

#include <memory>

namespace tessary {
namespace {

// Desktop coordinates: the primary 1920 × 1080 with a 25-point bar on top, the
// second 1440 × 900 to its right with top edges aligned.
const ScreenInfo primary{{0, 0, 1920, 1080}, {0, 0, 1920, 1055}};
const ScreenInfo second{{1920, 180, 1440, 900}, {1920, 180, 1440, 900}};

const RunningApp editor{812, QStringLiteral("editor"), QStringLiteral("Editor")};

// Accessibility coordinates (y down).
const Rect startFrame{500, 300, 800, 600};
const Rect primaryLeftHalf{0, 25, 960, 1055};
const QPointF primaryLeftEdge{3, 540};

void waitForCapture() { QTest::qWait(int(DragSnapper::captureDelay.count()) + 40); }
void waitForSnap() { QTest::qWait(int(DragSnapper::windowManagerGrace.count()) + 40); }

class DragSnapperTest : public ::testing::Test {
protected:
    DragSnapperTest()
    {
        desktop.setScreens({primary, second});
        snapper.start();
    }

    // Presses on `w`, waits for the capture, moves and resizes it by the given
    // amounts and releases with the pointer at `pointer`.
    void drag(WindowId w, QPointF travel, QSizeF resize, QPointF pointer)
    {
        desktop.pressLeft();
        waitForCapture();
        Rect f = desktop.windowFrame(w);
        desktop.placeWindow(
            w, {f.x + travel.x(), f.y + travel.y(), f.width + resize.width(), f.height + resize.height()});
        desktop.setPointer(pointer);
        desktop.releaseLeft();
        waitForSnap();
    }

    FakeDesktop desktop;
    WindowManager manager{desktop, desktop, desktop};
    DragSnapper snapper{manager, desktop, desktop, desktop, desktop};
};

struct ZoneCase {
    QPointF pointer;
    std::optional<Layout> expected;
    Rect screen = primary.frame;
    double scale = 1;
    friend void PrintTo(const ZoneCase &c, std::ostream *os)
    {
        *os << c.pointer.x() << ", " << c.pointer.y() << " at " << c.scale << "x";
    }
};

class DropZones : public ::testing::TestWithParam<ZoneCase> { };

TEST_P(DropZones, followTheTable)
{
    const ZoneCase &c = GetParam();
    EXPECT_EQ(DragSnapper::zone(c.pointer, c.screen, c.scale), c.expected);
}

INSTANTIATE_TEST_SUITE_P(Primary, DropZones,
    ::testing::Values(ZoneCase{{3, 540}, Layout::leftHalf}, ZoneCase{{6, 540}, Layout::leftHalf},
        ZoneCase{{6.5, 540}, std::nullopt}, ZoneCase{{1914, 540}, Layout::rightHalf},
        ZoneCase{{1913.5, 540}, std::nullopt}, ZoneCase{{960, 1074}, Layout::maximize},
        ZoneCase{{960, 1073.5}, std::nullopt},
        // Corners reach 40 points along either edge, bounds included.
        ZoneCase{{6, 1040}, Layout::topLeft}, ZoneCase{{6, 1039.5}, Layout::leftHalf},
        ZoneCase{{40, 1074}, Layout::topLeft}, ZoneCase{{40.5, 1080}, Layout::maximize},
        ZoneCase{{1890, 1080}, Layout::topRight}, ZoneCase{{1870, 1080}, Layout::maximize},
        ZoneCase{{1914, 1040}, Layout::topRight}, ZoneCase{{0, 0}, Layout::bottomLeft},
        ZoneCase{{40, 6}, Layout::bottomLeft}, ZoneCase{{6, 40}, Layout::bottomLeft},
        ZoneCase{{1880, 6}, Layout::bottomRight}, ZoneCase{{1920, 40}, Layout::bottomRight},
        ZoneCase{{1920, 40.5}, Layout::rightHalf},
        // Along the bottom between the corners and in the middle: nothing.
        ZoneCase{{960, 0}, std::nullopt}, ZoneCase{{41, 3}, std::nullopt}, ZoneCase{{960, 540}, std::nullopt}));

// The second display's own frame: x 1920..3360, y 180..1080.
INSTANTIATE_TEST_SUITE_P(Second, DropZones,
    ::testing::Values(ZoneCase{{1923, 600}, Layout::leftHalf, second.frame},
        ZoneCase{{3360, 1080}, Layout::topRight, second.frame}, ZoneCase{{1925, 183}, Layout::bottomLeft, second.frame},
        ZoneCase{{2640, 183}, std::nullopt, second.frame}, ZoneCase{{2640, 1076}, Layout::maximize, second.frame},
        ZoneCase{{3355, 600}, Layout::rightHalf, second.frame}));

// Edge bands and corner reaches are points: twice as many pixels at 2x.
INSTANTIATE_TEST_SUITE_P(DoubleDensity, DropZones,
    ::testing::Values(ZoneCase{{12, 540}, Layout::leftHalf, primary.frame, 2},
        ZoneCase{{12.5, 540}, std::nullopt, primary.frame, 2}, ZoneCase{{12, 1000}, Layout::topLeft, primary.frame, 2},
        ZoneCase{{12, 999.5}, Layout::leftHalf, primary.frame, 2},
        ZoneCase{{80, 1068}, Layout::topLeft, primary.frame, 2}));

struct MotionCase {
    const char *name;
    friend void PrintTo(const MotionCase &c, std::ostream *os) { *os << c.name; }
    QPointF travel;
    QSizeF resize;
    bool snaps;
};

class DragOrResize : public DragSnapperTest, public ::testing::WithParamInterface<MotionCase> { };

TEST_P(DragOrResize, onlyAMoveOfMoreThanTenPointsWithinFourPointsOfSizeSnaps)
{
    const MotionCase &c = GetParam();
    const WindowId w = desktop.addWindow(editor, startFrame);
    drag(w, c.travel, c.resize, primaryLeftEdge);
    EXPECT_EQ(desktop.frameWrites(w), c.snaps ? 1 : 0);
    if (c.snaps) {
        EXPECT_EQ(desktop.windowFrame(w), primaryLeftHalf);
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, DragOrResize,
    ::testing::Values(MotionCase{"notMoved", {0, 0}, {0, 0}, false},
        MotionCase{"movedExactlyTen", {-10, 0}, {0, 0}, false}, MotionCase{"movedEleven", {-11, 0}, {0, 0}, true},
        MotionCase{"diagonalExactlyTen", {-6, 8}, {0, 0}, false},
        MotionCase{"diagonalJustOverTen", {-6, 8.1}, {0, 0}, true},
        MotionCase{"sizeWithinFour", {-200, 0}, {4, -4}, true},
        MotionCase{"widthChangedFive", {-200, 0}, {5, 0}, false},
        MotionCase{"heightChangedFive", {-200, 0}, {0, -5}, false},
        MotionCase{"resizedByItsLeftEdge", {-300, 0}, {300, 0}, false}),
    [](const auto &p) { return std::string(p.param.name); });

// Travel and resize tolerance are points too: on a display of twice the
// density the same hand movement covers twice the pixels.
TEST_F(DragSnapperTest, onADoubleDensityDisplayThresholdsCountInPoints)
{
    desktop.setScreens({{primary.frame, primary.visible, 2}});
    const struct {
        QPointF travel;
        QSizeF resize;
        bool snaps;
    } motions[]
        = {{{-20, 0}, {0, 0}, false}, {{-21, 0}, {0, 0}, true}, {{-200, 0}, {8, -8}, true}, {{-200, 0}, {9, 0}, false}};
    for (const auto &motion : motions) {
        const WindowId w = desktop.addWindow(editor, startFrame);
        drag(w, motion.travel, motion.resize, {11, 540});
        EXPECT_EQ(desktop.frameWrites(w), motion.snaps ? 1 : 0) << motion.travel.x() << " " << motion.resize.width();
    }
}

struct DropCase {
    const char *name;
    friend void PrintTo(const DropCase &c, std::ostream *os) { *os << c.name; }
    Rect window;
    QPointF pointer;
    std::optional<Rect> expected;
};

class DropPlaces : public DragSnapperTest, public ::testing::WithParamInterface<DropCase> { };

TEST_P(DropPlaces, snapOnlyAtEdgesOfTheDisplayUnderThePointer)
{
    const DropCase &c = GetParam();
    const WindowId w = desktop.addWindow(editor, c.window);
    drag(w, {-50, 0}, {0, 0}, c.pointer);
    if (c.expected) {
        EXPECT_EQ(desktop.windowFrame(w), *c.expected);
    } else {
        EXPECT_EQ(desktop.frameWrites(w), 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, DropPlaces,
    ::testing::Values(DropCase{"leftEdgeMidHeight", startFrame, primaryLeftEdge, primaryLeftHalf},
        DropCase{"topEdgeMaximizes", startFrame, {960, 1078}, Rect{0, 25, 1920, 1055}},
        DropCase{"middle", startFrame, {960, 540}, std::nullopt},
        DropCase{"bottomEdgeBetweenCorners", startFrame, {960, 2}, std::nullopt},
        DropCase{"offEveryDisplay", startFrame, {-50, 540}, std::nullopt},
        DropCase{"secondDisplaysLeftEdge", {2100, 100, 600, 400}, {1923, 600}, Rect{1920, 0, 720, 900}},
        DropCase{"belowTheSecondDisplay", {2100, 100, 600, 400}, {2640, 100}, std::nullopt}),
    [](const auto &p) { return std::string(p.param.name); });

struct SwitchCase {
    const char *name;
    friend void PrintTo(const SwitchCase &c, std::ostream *os) { *os << c.name; }
    bool atPress;
    bool atRelease;
};

class EnabledAndTrusted : public DragSnapperTest, public ::testing::WithParamInterface<SwitchCase> { };

TEST_P(EnabledAndTrusted, areNeededAtPressAndAtRelease)
{
    const SwitchCase &c = GetParam();
    const bool snaps = c.atPress && c.atRelease;
    for (const bool switchTrust : {false, true}) {
        const WindowId w = desktop.addWindow(editor, startFrame);
        auto set = [&](bool on) { switchTrust ? desktop.setTrusted(on) : snapper.setEnabled(on); };
        set(c.atPress);
        desktop.pressLeft();
        waitForCapture();
        desktop.placeWindow(w, {400, 300, 800, 600});
        set(c.atRelease);
        desktop.setPointer(primaryLeftEdge);
        desktop.releaseLeft();
        waitForSnap();
        EXPECT_EQ(desktop.frameWrites(w), snaps ? 1 : 0) << (switchTrust ? "trust" : "enabled");
        set(true);
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, EnabledAndTrusted,
    ::testing::Values(SwitchCase{"onThroughout", true, true}, SwitchCase{"offAtPress", false, true},
        SwitchCase{"offAtRelease", true, false}, SwitchCase{"offThroughout", false, false}),
    [](const auto &p) { return std::string(p.param.name); });

TEST_F(DragSnapperTest, aQuickClickDropsItsPendingCapture)
{
    const WindowId w = desktop.addWindow(editor, startFrame);
    desktop.pressLeft();
    desktop.releaseLeft();
    waitForCapture();
    // Had the stale capture armed the snapper, this release would snap.
    desktop.placeWindow(w, {400, 300, 800, 600});
    desktop.setPointer(primaryLeftEdge);
    desktop.releaseLeft();
    waitForSnap();
    EXPECT_EQ(desktop.frameWrites(w), 0);
}

TEST_F(DragSnapperTest, aReleaseArmsNothingForTheNextOne)
{
    const WindowId w = desktop.addWindow(editor, startFrame);
    drag(w, {-50, 0}, {0, 0}, {960, 540});
    desktop.placeWindow(w, {400, 300, 800, 600});
    desktop.setPointer(primaryLeftEdge);
    desktop.releaseLeft();
    waitForSnap();
    EXPECT_EQ(desktop.frameWrites(w), 0);
}

TEST_F(DragSnapperTest, anotherWindowInFrontAtReleaseIsLeftAlone)
{
    const WindowId dragged = desktop.addWindow(editor, startFrame);
    desktop.pressLeft();
    waitForCapture();
    desktop.placeWindow(dragged, {400, 300, 800, 600});
    const WindowId other = desktop.addWindow(editor, {400, 300, 800, 600});
    desktop.setPointer(primaryLeftEdge);
    desktop.releaseLeft();
    waitForSnap();
    EXPECT_EQ(desktop.frameWrites(dragged), 0);
    EXPECT_EQ(desktop.frameWrites(other), 0);
}

TEST_F(DragSnapperTest, restoreAfterADragSnapReturnsToTheFrameWhereTheDragBegan)
{
    const WindowId w = desktop.addWindow(editor, startFrame);
    drag(w, {-300, 40}, {0, 0}, primaryLeftEdge);
    ASSERT_EQ(desktop.windowFrame(w), primaryLeftHalf);
    EXPECT_EQ(restored(manager), std::nullopt);
    EXPECT_EQ(desktop.windowFrame(w), startFrame);
}

TEST_F(DragSnapperTest, aDestroyedSnapperIgnoresPendingCapturesAndLaterPresses)
{
    const WindowId w = desktop.addWindow(editor, startFrame);
    auto own = std::make_unique<DragSnapper>(manager, desktop, desktop, desktop, desktop);
    snapper.setEnabled(false);
    own->start();
    desktop.pressLeft();
    own.reset();
    waitForCapture();
    desktop.placeWindow(w, {400, 300, 800, 600});
    desktop.setPointer(primaryLeftEdge);
    desktop.releaseLeft();
    desktop.pressLeft();
    waitForSnap();
    EXPECT_EQ(desktop.frameWrites(w), 0);
}

// Window managers that tile a window dropped at an edge do it on the release.
TEST_F(DragSnapperTest, aDropTheWindowManagerTilesItselfIsLeftToIt)
{
    const WindowId w = desktop.addWindow(editor, startFrame);
    desktop.pressLeft();
    waitForCapture();
    desktop.placeWindow(w, {200, 300, 800, 600});
    desktop.setPointer(primaryLeftEdge);
    desktop.releaseLeft();
    const Rect tiled{0, 0, 960, 1080};
    desktop.placeWindow(w, tiled);
    waitForSnap();
    EXPECT_EQ(desktop.frameWrites(w), 0);
    EXPECT_EQ(desktop.windowFrame(w), tiled);
}

} // namespace
} // namespace tessary

#include "platform/x11/windows/size_hints.h"
#include "platform/x11/windows/strut_area.h"
#include "platform/x11/windows/work_areas.h"
#include "platform/x11/windows/x11_screens.h"

#include "foreign_window.h"
#include "test_desktop.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ostream>

namespace tessary {

void PrintTo(const Rect &r, std::ostream *os)
{
    *os << "(" << r.x << ", " << r.y << ", " << r.width << ", " << r.height << ")";
}

namespace {

// The test session: LEFT 1920×1080 (primary) and RIGHT 1440×900 to its right,
// tops aligned, on a 3360×1080 root.
const QSize root(3360, 1080);
const QRect left(0, 0, 1920, 1080);
const QRect right(1920, 0, 1440, 900);

struct StrutCase {
    const char *name;
    QList<Strut> struts;
    QRect leftUsable;
    QRect rightUsable;
};

// Along the bottom edge of the root.
Strut bottomPanel(quint32 thickness, quint32 fromX, quint32 toX)
{
    return {.bottom = thickness, .bottomStartX = fromX, .bottomEndX = toX};
}

void PrintTo(const StrutCase &c, std::ostream *os) { *os << c.name; }

class StrutAreas : public ::testing::TestWithParam<StrutCase> { };

TEST_P(StrutAreas, shrinkOnlyTheMonitorTheyReserveSpaceOn)
{
    const StrutCase &c = GetParam();
    EXPECT_EQ(usableArea(left, root, c.struts), c.leftUsable);
    EXPECT_EQ(usableArea(right, root, c.struts), c.rightUsable);
}

INSTANTIATE_TEST_SUITE_P(TwoMonitors, StrutAreas,
    ::testing::Values(StrutCase{"bottomOfLeft", {bottomPanel(30, 0, 1919)}, QRect(0, 0, 1920, 1050), right},
        // Measured from the root's bottom edge, which lies 180 below RIGHT.
        StrutCase{"bottomOfRight", {bottomPanel(210, 1920, 3359)}, left, QRect(1920, 0, 1440, 870)},
        StrutCase{
            "topAcrossBoth", {{.top = 25, .topEndX = 3359}}, QRect(0, 25, 1920, 1055), QRect(1920, 25, 1440, 875)},
        // A dock at RIGHT's left edge reaches across LEFT but does not shrink it.
        StrutCase{"innerEdgeOfRight", {{.left = 1960, .leftEndY = 899}}, left, QRect(1960, 0, 1400, 900)},
        StrutCase{"rightEdgeOfRight", {{.right = 50, .rightEndY = 899}}, left, QRect(1920, 0, 1390, 900)},
        StrutCase{"fullBottomEdge", {*Strut::fromFull({0, 0, 0, 30}, root)}, QRect(0, 0, 1920, 1050), right},
        StrutCase{
            "twoPanels", {bottomPanel(30, 0, 1919), {.left = 48, .leftEndY = 1079}}, QRect(48, 0, 1872, 1050), right},
        StrutCase{"outsideTheSpan", {bottomPanel(30, 2000, 2100)}, left, right}),
    [](const auto &test) { return std::string(test.param.name); });

struct WorkAreaCase {
    const char *name;
    WorkAreaHints hints;
    QRect leftUsable, rightUsable;
};

void PrintTo(const WorkAreaCase &c, std::ostream *os) { *os << c.name; }

class WorkAreas : public ::testing::TestWithParam<WorkAreaCase> { };

TEST_P(WorkAreas, takeEachMonitorsOwnAreaFirstThenStrutsThenTheDesktopWideOne)
{
    const WorkAreaCase &c = GetParam();
    EXPECT_EQ(usableArea(left, root, c.hints), c.leftUsable);
    EXPECT_EQ(usableArea(right, root, c.hints), c.rightUsable);
}

const QRect belowTopBar(0, 32, 1920, 1048);

INSTANTIATE_TEST_SUITE_P(TwoMonitors, WorkAreas,
    ::testing::Values(WorkAreaCase{"nothing", {}, left, right},
        // Listed in another order than the monitors.
        WorkAreaCase{"perMonitor", {{right, belowTopBar}, {}, {}}, belowTopBar, right},
        WorkAreaCase{
            "perMonitorOverStruts", {{belowTopBar, right}, {bottomPanel(30, 0, 1919)}, {}}, belowTopBar, right},
        WorkAreaCase{"strutsOverDesktopWide", {{}, {bottomPanel(30, 0, 1919)}, QRect(0, 0, 3360, 1050)},
            QRect(0, 0, 1920, 1050), right},
        WorkAreaCase{"desktopWideOnly", {{}, {}, QRect(0, 40, 3360, 1040)}, QRect(0, 40, 1920, 1040),
            QRect(1920, 40, 1440, 860)},
        WorkAreaCase{"desktopWideOutside", {{}, {}, QRect(5000, 0, 10, 10)}, left, right}),
    [](const auto &test) { return std::string(test.param.name); });

struct HintsCase {
    const char *name;
    SizeHints hints;
    QSize requested;
    QSize expected;
};

void PrintTo(const HintsCase &c, std::ostream *os) { *os << c.name; }

class SizeConstraints : public ::testing::TestWithParam<HintsCase> { };

TEST_P(SizeConstraints, giveTheSizeTheWindowManagerWill)
{
    EXPECT_EQ(GetParam().hints.constrain(GetParam().requested), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Icccm, SizeConstraints,
    ::testing::Values(HintsCase{"none", {}, {953, 1047}, {953, 1047}},
        // xterm: 6 × 13 cells above a base of 4 × 4 (min = base).
        HintsCase{"cells", {{10, 17}, {}, {4, 4}, {6, 13}}, {953, 1047}, {952, 1044}},
        HintsCase{"exactCells", {{10, 17}, {}, {4, 4}, {6, 13}}, {484, 316}, {484, 316}},
        HintsCase{"cellsFromMinimumWithoutBase", {{10, 20}, {}, {}, {6, 13}}, {103, 100}, {100, 98}},
        HintsCase{"belowMinimum", {{200, 150}, {}, {}, {}}, {100, 100}, {200, 150}},
        HintsCase{"aboveMaximum", {{}, {640, 480}, {}, {}}, {953, 1047}, {640, 480}}),
    [](const auto &test) { return std::string(test.param.name); });

TEST(X11Screens, listsBothMonitorsPrimaryFirstInDesktopCoordinates)
{
    TestDesktop desktop;
    const QList<ScreenInfo> screens = X11Screens(desktop.x11()).screens();
    ASSERT_EQ(screens.size(), 2);
    EXPECT_EQ(screens[0].frame, (Rect{0, 0, 1920, 1080}));
    EXPECT_EQ(screens[0].visible, screens[0].frame);
    // RIGHT's top is level with LEFT's: 900 tall, it starts 180 above the bottom.
    EXPECT_EQ(screens[1].frame, (Rect{1920, 180, 1440, 900}));
    EXPECT_EQ(screens[1].visible, screens[1].frame);
}

TEST(X11Screens, aPanelOnOneMonitorShrinksOnlyThatMonitor)
{
    TestDesktop desktop;
    X11Screens x11Screens(desktop.x11());
    // 30 pixels along RIGHT's bottom edge (root y 870–899).
    ForeignWindow panel(QRect(1920, 870, 1440, 30));
    panel.setAtom("_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DOCK");
    panel.setCardinals("_NET_WM_STRUT_PARTIAL", {0, 0, 0, 210, 0, 0, 0, 0, 0, 0, 1920, 3359});
    panel.map();
    ASSERT_TRUE(TestDesktop::waitFor(
        [&] { return x11Screens.screens().value(1).visible != x11Screens.screens().value(1).frame; }));

    const QList<ScreenInfo> screens = x11Screens.screens();
    EXPECT_EQ(screens[0].visible, (Rect{0, 0, 1920, 1080}));
    EXPECT_EQ(screens[1].visible, (Rect{1920, 210, 1440, 870}));
}

struct PointerCase {
    int rootX, rootY;
    QPointF expected;
};

TEST(X11Screens, pointerLocationIsInDesktopCoordinates)
{
    TestDesktop desktop;
    X11Screens screens(desktop.x11());
    const PointerCase cases[] = {{0, 0, {0, 1080}}, {1919, 1079, {1919, 1}}, {2000, 50, {2000, 1030}}};
    for (const PointerCase &c : cases) {
        SCOPED_TRACE(std::to_string(c.rootX) + "," + std::to_string(c.rootY));
        ASSERT_TRUE(desktop.xdotool({QStringLiteral("mousemove"), QString::number(c.rootX), QString::number(c.rootY)}));
        EXPECT_EQ(screens.pointerLocation(), c.expected);
    }
}

TEST(X11Screens, compositedWhileAClientOwnsTheCompositingSelection)
{
    TestDesktop desktop;
    X11Screens screens(desktop.x11());
    EXPECT_FALSE(screens.composited()) << "openbox composites nothing";

    // What a compositing manager does on start, from a connection of its own.
    xcb_connection_t *compositor = xcb_connect(nullptr, nullptr);
    const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(compositor)).data;
    const xcb_window_t owner = xcb_generate_id(compositor);
    xcb_create_window(compositor, XCB_COPY_FROM_PARENT, owner, screen->root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
        XCB_COPY_FROM_PARENT, 0, nullptr);
    const xcb_atom_t selection = desktop.x11().atom("_NET_WM_CM_S0");
    xcb_set_selection_owner(compositor, owner, selection, XCB_CURRENT_TIME);
    std::free(xcb_get_input_focus_reply(compositor, xcb_get_input_focus(compositor), nullptr));
    EXPECT_TRUE(screens.composited());

    xcb_disconnect(compositor);
    EXPECT_TRUE(TestDesktop::waitFor([&] { return !screens.composited(); }));
}

} // namespace
} // namespace tessary

#include "platform/x11/windows/x11_accessibility.h"
#include "platform/x11/windows/x11_apps.h"
#include "platform/x11/windows/x11_screens.h"
#include "platform/x11/windows/x11_workspace.h"

#include "awaited.h"
#include "core/windows/geometry.h"
#include "foreign_window.h"
#include "test_desktop.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

QRect toRoot(const Rect &r) { return QRect(int(r.x), int(r.y), int(r.width), int(r.height)); }

// Whether the window moved, once the move has ended.
bool moved(X11Accessibility &accessibility, xcb_window_t window, const Rect &frame)
{
    QObject context;
    return awaited<bool>([&](std::function<void(bool)> done) {
        accessibility.setFrame(window, frame, &context, std::move(done));
    }).value_or(false);
}

struct ClientCase {
    const char *program;
    QStringList arguments;
};

void PrintTo(const ClientCase &c, std::ostream *os) { *os << c.program; }

class SnapEveryLayout : public ::testing::TestWithParam<ClientCase> { };

// The visible frame lands exactly on the target; a client with size
// increments is as large as fits in whole cells (never larger).
TEST_P(SnapEveryLayout, landsOnTheTargetOnEachMonitor)
{
    TestDesktop desktop;
    const TestDesktop::Client client = desktop.launch(QString::fromLatin1(GetParam().program), GetParam().arguments);
    ASSERT_NE(client.window, XCB_WINDOW_NONE);
    X11Accessibility accessibility(desktop.x11());
    const QList<ScreenInfo> screens = X11Screens(desktop.x11()).screens();
    ASSERT_EQ(screens.size(), 2);
    const double primaryHeight = screens.first().frame.height;
    const QSize increment = desktop.sizeIncrement(client.window);

    for (const ScreenInfo &screen : screens) {
        for (const Layout layout : Layouts::allCases) {
            SCOPED_TRACE(rawValue(layout).toStdString() + " on the monitor at x " + std::to_string(screen.frame.x));
            const auto current = accessibility.frame(client.window);
            ASSERT_TRUE(current);
            const Rect desktopFrame = Geometry::flip(*current, primaryHeight);
            const QRect target
                = toRoot(Geometry::flip(Geometry::target(layout, screen.visible, 8, desktopFrame), primaryHeight));

            ASSERT_TRUE(moved(accessibility, client.window,
                Rect{double(target.x()), double(target.y()), double(target.width()), double(target.height())}));

            const QRect real = desktop.managedFrame(client.window);
            EXPECT_EQ(real.topLeft(), target.topLeft());
            EXPECT_LE(real.width(), target.width());
            EXPECT_GT(real.width(), target.width() - increment.width());
            EXPECT_LE(real.height(), target.height());
            EXPECT_GT(real.height(), target.height() - increment.height());
            EXPECT_EQ(toRoot(*accessibility.frame(client.window)), real);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(RealClients, SnapEveryLayout,
    ::testing::Values(ClientCase{"xlogo", {QStringLiteral("-geometry"), QStringLiteral("300x200+40+60")}},
        ClientCase{"xterm", {QStringLiteral("-geometry"), QStringLiteral("80x24+40+60")}}),
    [](const auto &test) { return std::string(test.param.program); });

TEST(X11Accessibility, unmaximizesBeforeMoving)
{
    TestDesktop desktop;
    const TestDesktop::Client client = desktop.launch(QStringLiteral("xlogo"));
    ASSERT_NE(client.window, XCB_WINDOW_NONE);
    desktop.changeState(client.window, true, "_NET_WM_STATE_MAXIMIZED_VERT");
    desktop.changeState(client.window, true, "_NET_WM_STATE_MAXIMIZED_HORZ");
    ASSERT_TRUE(TestDesktop::waitFor([&] { return desktop.managedFrame(client.window).width() == 1920; }));

    X11Accessibility accessibility(desktop.x11());
    ASSERT_TRUE(moved(accessibility, client.window, Rect{100, 50, 700, 500}));

    EXPECT_EQ(desktop.managedFrame(client.window), QRect(100, 50, 700, 500));
    EXPECT_FALSE(desktop.hasState(client.window, "_NET_WM_STATE_MAXIMIZED_VERT"));
    EXPECT_FALSE(desktop.hasState(client.window, "_NET_WM_STATE_MAXIMIZED_HORZ"));
}

// A client that draws its own frame inside a shadow margin: the margin is not
// part of the frame the user sees, so the window itself ends up that much larger.
TEST(X11Accessibility, leavesAClientSideShadowOutOfTheFrame)
{
    TestDesktop desktop;
    ForeignWindow window(QRect(300, 300, 400, 300));
    window.setUndecorated();
    window.setCardinals("_GTK_FRAME_EXTENTS", {12, 14, 8, 20});
    window.map();
    X11Accessibility accessibility(desktop.x11());
    ASSERT_TRUE(TestDesktop::waitFor([&] { return desktop.activeWindow() == window.id(); }));
    ASSERT_EQ(desktop.managedFrame(window.id()), window.geometry()) << "openbox decorated it";

    ASSERT_TRUE(moved(accessibility, window.id(), Rect{100, 50, 700, 500}));

    EXPECT_EQ(window.geometry(), QRect(100 - 12, 50 - 8, 700 + 12 + 14, 500 + 8 + 20));
    EXPECT_EQ(accessibility.frame(window.id()), (Rect{100, 50, 700, 500}));
}

TEST(X11Accessibility, reportsFullScreenFromTheWindowState)
{
    TestDesktop desktop;
    const TestDesktop::Client client = desktop.launch(QStringLiteral("xlogo"));
    ASSERT_NE(client.window, XCB_WINDOW_NONE);
    X11Accessibility accessibility(desktop.x11());
    EXPECT_FALSE(accessibility.isFullScreen(client.window));

    desktop.changeState(client.window, true, "_NET_WM_STATE_FULLSCREEN");
    EXPECT_TRUE(TestDesktop::waitFor([&] { return accessibility.isFullScreen(client.window); }));
}

TEST(X11Accessibility, aWindowThatIsGoneHasNoFrameAndCannotMove)
{
    TestDesktop desktop;
    X11Accessibility accessibility(desktop.x11());
    const WindowId gone = 0x7ffffff;
    EXPECT_FALSE(accessibility.frame(gone));
    EXPECT_FALSE(moved(accessibility, gone, Rect{0, 0, 300, 300}));
}

// xlogo sets no _NET_WM_PID: its process still comes from the X server, and
// two of its windows never share a key.
TEST(X11Accessibility, findsTheFocusedWindowOfAClientWithoutPid)
{
    TestDesktop desktop;
    const TestDesktop::Client first = desktop.launch(QStringLiteral("xlogo"));
    const TestDesktop::Client second = desktop.launch(QStringLiteral("xlogo"));
    ASSERT_NE(first.window, XCB_WINDOW_NONE);
    ASSERT_NE(second.window, XCB_WINDOW_NONE);
    X11Workspace workspace(desktop.x11());
    X11Accessibility accessibility(desktop.x11());

    const auto front = workspace.frontmostApplication();
    ASSERT_TRUE(front);
    EXPECT_EQ(front->pid, second.pid);
    EXPECT_EQ(accessibility.focusedWindow(*front), WindowId(second.window));

    desktop.activate(first.window);
    ASSERT_TRUE(TestDesktop::waitFor([&] { return desktop.activeWindow() == first.window; }));
    const auto other = workspace.frontmostApplication();
    ASSERT_TRUE(other);
    EXPECT_EQ(other->pid, first.pid);
    EXPECT_EQ(accessibility.focusedWindow(*other), WindowId(first.window));
    EXPECT_NE(accessibility.windowHash(first.window), accessibility.windowHash(second.window));
}

// While another application (our panel, say) is active, an application's
// front window is the one the user worked in last, not its topmost one.
TEST(X11Accessibility, anInactiveApplicationsFrontWindowIsItsLastActiveOne)
{
    TestDesktop desktop;
    X11Accessibility accessibility(desktop.x11());
    ForeignWindow worked(QRect(100, 100, 300, 200));
    ForeignWindow raised(QRect(200, 150, 300, 200));
    worked.map();
    raised.map();
    const auto activate = [&](xcb_window_t window) {
        desktop.activate(window);
        return TestDesktop::waitFor([&] { return desktop.activeWindow() == window; });
    };
    ASSERT_TRUE(activate(raised.id()));
    ASSERT_TRUE(activate(worked.id()));
    ASSERT_TRUE(desktop.xdotool({QStringLiteral("windowraise"), QString::number(raised.id())}));
    const TestDesktop::Client other = desktop.launch(QStringLiteral("xlogo"));
    ASSERT_NE(other.window, XCB_WINDOW_NONE);

    const QList<xcb_window_t> stacking = X11Clients(desktop.x11()).stackingTopFirst();
    ASSERT_LT(stacking.indexOf(raised.id()), stacking.indexOf(worked.id()));
    const std::optional<RunningApp> app = X11Apps(desktop.x11()).appOf(worked.id());
    ASSERT_TRUE(app);
    EXPECT_EQ(accessibility.focusedWindow(*app), WindowId(worked.id()));
}

} // namespace
} // namespace tessary

#include "platform/x11/windows/x11_mouse_monitor.h"

#include "test_desktop.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

TEST(X11MouseMonitor, seesLeftPressesAndReleasesAnywhereWithoutGrabbing)
{
    TestDesktop desktop;
    const TestDesktop::Client client = desktop.launch(QStringLiteral("xlogo"));
    ASSERT_NE(client.window, XCB_WINDOW_NONE);
    X11MouseMonitor monitor(desktop.x11());
    int downs = 0, ups = 0;
    ASSERT_TRUE(monitor.listen([&] { ++downs; }, [&] { ++ups; }));

    const auto [x, y] = std::pair(QString::number(desktop.managedFrame(client.window).center().x()),
        QString::number(desktop.managedFrame(client.window).center().y()));
    ASSERT_TRUE(desktop.xdotool({QStringLiteral("mousemove"), x, y, QStringLiteral("mousedown"), QStringLiteral("1")}));
    EXPECT_TRUE(TestDesktop::waitFor([&] { return downs == 1; }));
    EXPECT_EQ(ups, 0);
    ASSERT_TRUE(desktop.xdotool({QStringLiteral("mouseup"), QStringLiteral("1")}));
    EXPECT_TRUE(TestDesktop::waitFor([&] { return ups == 1; }));

    // The right button is not reported; the left click after it is.
    ASSERT_TRUE(
        desktop.xdotool({QStringLiteral("click"), QStringLiteral("3"), QStringLiteral("click"), QStringLiteral("1")}));
    EXPECT_TRUE(TestDesktop::waitFor([&] { return ups == 2; }));
    EXPECT_EQ(downs, 2);

    // Nothing was grabbed: another client can still take the pointer.
    xcb_connection_t *other = xcb_connect(nullptr, nullptr);
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(other)).data->root;
    auto *grab = xcb_grab_pointer_reply(other,
        xcb_grab_pointer(other, 0, root, XCB_EVENT_MASK_BUTTON_PRESS, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
            XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_CURRENT_TIME),
        nullptr);
    ASSERT_TRUE(grab);
    EXPECT_EQ(grab->status, XCB_GRAB_STATUS_SUCCESS);
    std::free(grab);
    xcb_disconnect(other);
}

TEST(X11MouseMonitor, followsALeftHandedButtonMap)
{
    TestDesktop desktop;
    X11MouseMonitor monitor(desktop.x11());
    int downs = 0, ups = 0;
    ASSERT_TRUE(monitor.listen([&] { ++downs; }, [&] { ++ups; }));
    const auto setMap = [](const char *map) {
        return TestDesktop::run(
            QStringLiteral("xmodmap"), {QStringLiteral("-e"), QStringLiteral("pointer = %1").arg(QLatin1String(map))});
    };
    ASSERT_TRUE(setMap("3 2 1"));
    // The physical right button is the primary one once the map has arrived.
    const bool seen = TestDesktop::waitFor([&] {
        desktop.xdotool({QStringLiteral("click"), QStringLiteral("3")});
        return TestDesktop::waitFor([&] { return ups > 0; }, 200);
    });
    // The left one is not: only the right click after it is reported.
    downs = ups = 0;
    desktop.xdotool({QStringLiteral("click"), QStringLiteral("1"), QStringLiteral("click"), QStringLiteral("3")});
    const bool rightOnly = TestDesktop::waitFor([&] { return ups == 1; });
    setMap("default");
    EXPECT_TRUE(seen);
    EXPECT_TRUE(rightOnly);
    EXPECT_EQ(downs, 1);
}

TEST(X11MouseMonitor, everyListenerHearsEachPress)
{
    TestDesktop desktop;
    X11MouseMonitor monitor(desktop.x11());
    int first = 0, second = 0;
    ASSERT_TRUE(monitor.listen([&] { ++first; }, {}));
    ASSERT_TRUE(monitor.listen([&] { ++second; }, {}));
    ASSERT_TRUE(desktop.xdotool({QStringLiteral("mousemove"), QStringLiteral("5"), QStringLiteral("5"),
        QStringLiteral("click"), QStringLiteral("1")}));
    EXPECT_TRUE(TestDesktop::waitFor([&] { return first == 1 && second == 1; }));
}

} // namespace
} // namespace tessary

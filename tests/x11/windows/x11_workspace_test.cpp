#include "platform/x11/windows/x11_workspace.h"

#include "test_desktop.h"

#include <gtest/gtest.h>

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QWidget>

namespace tessary {
namespace {

struct AppCase {
    const char *program;
    const char *id;
    const char *name;
};

// xterm is known by its desktop entry (found through StartupWMClass); xlogo has
// none and sets no _NET_WM_PID, so its class names it and the server knows its pid.
TEST(X11Workspace, theFrontmostApplicationOwnsTheActiveWindow)
{
    const AppCase cases[] = {{"xterm", "debian-xterm", "XTerm"}, {"xlogo", "XLogo", "XLogo"}};
    for (const AppCase &c : cases) {
        SCOPED_TRACE(c.program);
        TestDesktop desktop;
        const TestDesktop::Client client = desktop.launch(QString::fromLatin1(c.program));
        ASSERT_NE(client.window, XCB_WINDOW_NONE);
        const X11Workspace workspace(desktop.x11());
        const auto front = workspace.frontmostApplication();
        ASSERT_TRUE(front);
        EXPECT_EQ(front->pid, client.pid);
        EXPECT_EQ(front->id, QString::fromLatin1(c.id));
        EXPECT_EQ(front->name, QString::fromLatin1(c.name));
        EXPECT_EQ(workspace.menuBarOwningApplication(), front);
        EXPECT_TRUE(workspace.runningApplications().contains(*front));
    }
}

TEST(X11Workspace, whileThisProcessIsActiveTheLastOtherApplicationOwnsTheMenuBar)
{
    TestDesktop desktop;
    const TestDesktop::Client xlogo = desktop.launch(QStringLiteral("xlogo"));
    const TestDesktop::Client xterm = desktop.launch(QStringLiteral("xterm"));
    ASSERT_NE(xterm.window, XCB_WINDOW_NONE);
    X11Workspace workspace(desktop.x11());
    // The window manager may focus the new xterm late; once it has, xlogo's
    // activation is the last one.
    desktop.activate(xterm.window);
    ASSERT_TRUE(TestDesktop::waitFor([&] { return desktop.activeWindow() == xterm.window; }));
    // The workspace reads the active window when the change reaches this
    // process, so the panel may take it only once xlogo's activation has.
    struct ActivationNotices : QAbstractNativeEventFilter {
        explicit ActivationNotices(TestDesktop &watched)
            : desktop(watched)
        {
            QCoreApplication::instance()->installNativeEventFilter(this);
        }
        ~ActivationNotices() override { QCoreApplication::instance()->removeNativeEventFilter(this); }
        bool nativeEventFilter(const QByteArray &, void *message, qintptr *) override
        {
            if ((static_cast<const xcb_generic_event_t *>(message)->response_type & 0x7f) == XCB_PROPERTY_NOTIFY)
                seen = desktop.activeWindow();
            return false;
        }
        TestDesktop &desktop;
        xcb_window_t seen = XCB_WINDOW_NONE;
    } notices(desktop);
    desktop.activate(xlogo.window);
    ASSERT_TRUE(TestDesktop::waitFor([&] { return notices.seen == xlogo.window; }));

    QWidget panel;
    panel.setWindowTitle(QStringLiteral("panel"));
    panel.resize(200, 100);
    panel.show();
    const xcb_window_t own = xcb_window_t(panel.winId());
    ASSERT_TRUE(TestDesktop::waitFor([&] {
        desktop.activate(own);
        return desktop.activeWindow() == own;
    }));

    EXPECT_EQ(workspace.frontmostApplication()->pid, workspace.ownPid());
    const auto owner = workspace.menuBarOwningApplication();
    ASSERT_TRUE(owner);
    // xlogo was active last, though xterm is above it.
    EXPECT_EQ(owner->pid, xlogo.pid);
}

TEST(X11Workspace, aClosedActiveWindowLeavesNothingInFront)
{
    TestDesktop desktop;
    X11Workspace workspace(desktop.x11());
    {
        TestDesktop clients;
        ASSERT_NE(clients.launch(QStringLiteral("xlogo")).window, XCB_WINDOW_NONE);
        ASSERT_TRUE(workspace.frontmostApplication());
    }
    EXPECT_TRUE(TestDesktop::waitFor([&] { return !workspace.frontmostApplication(); }));
}

} // namespace
} // namespace tessary

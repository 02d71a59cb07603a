#include "core/windows/ax.h"

#include "platform/fake/windows/fake_desktop.h"

#include <gtest/gtest.h>

#include <ostream>

#include <functional>

namespace tessary {
namespace {

const RunningApp editor{812, QStringLiteral("editor"), QStringLiteral("Editor")};
const RunningApp viewer{913, QStringLiteral("viewer"), QStringLiteral("Viewer")};

struct FrontCase {
    const char *name;
    friend void PrintTo(const FrontCase &c, std::ostream *os) { *os << c.name; }
    // Arranges the desktop; returns the window expected in front, or 0 for none.
    std::function<WindowId(FakeDesktop &)> arrange;
    qint64 expectedPid;
};

class FrontWindow : public ::testing::TestWithParam<FrontCase> { };

TEST_P(FrontWindow, isTheFocusedWindowOfTheAppTheUserWorksIn)
{
    FakeDesktop desktop;
    const WindowId expected = GetParam().arrange(desktop);
    const std::optional<AX::FrontWindow> front = AX::frontWindow(desktop, desktop);
    if (expected == 0) {
        EXPECT_FALSE(front.has_value());
        return;
    }
    ASSERT_TRUE(front.has_value());
    EXPECT_EQ(front->window, expected);
    EXPECT_EQ(front->app.pid, GetParam().expectedPid);
}

INSTANTIATE_TEST_SUITE_P(Cases, FrontWindow,
    ::testing::Values(FrontCase{"nothingActive", [](FakeDesktop &) -> WindowId { return 0; }, 0},
        FrontCase{"otherAppActive",
            [](FakeDesktop &d) {
                d.addWindow(editor, {0, 0, 100, 100});
                return d.addWindow(viewer, {0, 0, 100, 100});
            },
            viewer.pid},
        FrontCase{"focusedWindowOfTheActiveApp",
            [](FakeDesktop &d) {
                const WindowId first = d.addWindow(editor, {0, 0, 100, 100});
                d.addWindow(editor, {0, 0, 100, 100});
                d.activate(first);
                return first;
            },
            editor.pid},
        FrontCase{"ownPanelActiveFallsBackToTheLastOtherApp",
            [](FakeDesktop &d) {
                const WindowId w = d.addWindow(editor, {0, 0, 100, 100});
                d.activateOwnApp();
                return w;
            },
            editor.pid},
        FrontCase{"ownPanelActiveAndNoOtherApp",
            [](FakeDesktop &d) -> WindowId {
                d.activateOwnApp();
                return 0;
            },
            0},
        FrontCase{"ownPanelActiveAndOwnAppOwnsTheMenuBar",
            [](FakeDesktop &d) -> WindowId {
                d.addWindow(editor, {0, 0, 100, 100});
                d.activateOwnApp();
                d.setMenuBarOwner(d.ownApp());
                return 0;
            },
            0},
        FrontCase{"activeAppWithoutAWindow",
            [](FakeDesktop &d) -> WindowId {
                d.closeWindow(d.addWindow(editor, {0, 0, 100, 100}));
                return 0;
            },
            0}),
    [](const auto &p) { return std::string(p.param.name); });

TEST(WindowKey, isPidColonHashAndDistinguishesWindowsOfOneApp)
{
    FakeDesktop desktop;
    const WindowId a = desktop.addWindow(editor, {0, 0, 100, 100});
    const WindowId b = desktop.addWindow(editor, {0, 0, 100, 100});
    EXPECT_EQ(AX::key(desktop, a, 812), QStringLiteral("812:") + QString::number(desktop.windowHash(a)));
    EXPECT_NE(AX::key(desktop, a, 812), AX::key(desktop, b, 812));
}

} // namespace
} // namespace tessary

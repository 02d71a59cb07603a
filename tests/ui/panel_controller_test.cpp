#include "ui/panel_controller.h"

#include "platform/fake/app/fake_keystroke_sender.h"
#include "platform/fake/app/fake_panel_keyboard.h"
#include "platform/fake/windows/fake_desktop.h"

#include <QCursor>
#include <QGuiApplication>
#include <QLabel>
#include <QPointer>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace tessary {
namespace {

using Screen = PanelController::Screen;

// The test X session's layout: a primary 1920x1080 monitor and a 1440x900 one to its right.
const QList<Screen> twoMonitors = {
    {{0, 0, 1920, 1080}, {0, 0, 1920, 1080}},
    {{1920, 0, 1440, 900}, {1920, 0, 1440, 900}},
};

TEST(PanelController, placementFollowsThePointersScreen)
{
    const struct {
        const char *name;
        QList<Screen> screens;
        int primary;
        QPoint pointer;
        QRect frame;
    } cases[] = {
        {"pointer on the left monitor", twoMonitors, 0, {100, 100}, {620, 216, 680, 400}},
        {"pointer on the right monitor", twoMonitors, 0, {2500, 800}, {2300, 180, 680, 400}},
        {"pointer on the shared edge goes to the first", twoMonitors, 0, {1919, 10}, {620, 216, 680, 400}},
        {"pointer below the short monitor: primary", twoMonitors, 1, {2500, 1000}, {2300, 180, 680, 400}},
        {"no primary known: first screen", twoMonitors, -1, {5000, 5000}, {620, 216, 680, 400}},
        {"a top panel shrinks the available area", {{{0, 0, 1920, 1080}, {0, 30, 1920, 1050}}}, 0, {10, 10},
            {620, 240, 680, 400}},
    };
    for (const auto &c : cases)
        EXPECT_EQ(PanelController::placement(c.screens, c.primary, c.pointer, {680, 400}), c.frame) << c.name;
}

TEST(PanelController, desktopCoordinatesBecomeQtGlobalOnes)
{
    // Desktop coordinates: origin at the primary's bottom-left, y up; a
    // 30-point top panel on the primary, the second monitor top-aligned.
    const QList<ScreenInfo> desktop = {
        {{0, 0, 1920, 1080}, {0, 0, 1920, 1050}},
        {{1920, 180, 1440, 900}, {1920, 180, 1440, 900}},
    };
    for (const QPoint origin : {QPoint(0, 0), QPoint(1440, 0)}) {
        const QList<Screen> global = PanelController::toGlobal(desktop, origin);
        ASSERT_EQ(global.size(), 2);
        EXPECT_EQ(global[0].frame, QRect(origin, QSize(1920, 1080)));
        EXPECT_EQ(global[0].available, QRect(origin + QPoint(0, 30), QSize(1920, 1050)));
        EXPECT_EQ(global[1].available, QRect(origin + QPoint(1920, 0), QSize(1440, 900)));
        EXPECT_EQ(PanelController::toGlobal(QPointF(2000, 1000), desktop, origin), origin + QPoint(2000, 80));
    }
}

class PanelControllerShown : public ::testing::Test {
protected:
    static QLabel *content() { return new QLabel(QStringLiteral("content")); }

    FakeDesktop desktop;
    FakeKeystrokeSender keystrokes;
    FakePanelKeyboard keyboard;
    PanelController controller{{desktop, keystrokes, &keyboard, &desktop}};
    int hides = 0;

    void SetUp() override
    {
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        const Rect frame{0, 0, double(screen.width()), double(screen.height())};
        desktop.setScreens({{frame, frame}});
        desktop.setPointer(QPointF(10, 10));
        controller.onHide = [this] { ++hides; };
    }
};

TEST_F(PanelControllerShown, remembersTheTargetThenShowsAndFocusesThePanelAtItsSize)
{
    controller.show(content(), 580, 440);
    ASSERT_TRUE(controller.panel());
    EXPECT_TRUE(controller.isVisible());
    EXPECT_EQ(keystrokes.remembered, 1);
    const QScreen *screen = QGuiApplication::primaryScreen();
    EXPECT_EQ(controller.panel()->geometry(),
        PanelController::placement({{screen->geometry(), screen->geometry()}}, 0, {}, {580, 440}));
    EXPECT_EQ(keyboard.focused, QList<quintptr>{controller.panel()->winId()});
    EXPECT_TRUE(QTest::qWaitForWindowActive(controller.panel()));
    const quintptr window = controller.panel()->winId();
    controller.hide();
    EXPECT_EQ(keyboard.hidden, QList<quintptr>{window});
}

TEST_F(PanelControllerShown, heightChangesKeepTheTopEdgeAndIgnoreHalfPoints)
{
    controller.show(content(), 680, 66);
    const QRect before = controller.panel()->geometry();
    controller.setHeight(66.5);
    EXPECT_EQ(controller.panel()->geometry(), before);
    controller.setHeight(228);
    EXPECT_EQ(controller.panel()->geometry(), QRect(before.topLeft(), QSize(680, 228)));
}

TEST_F(PanelControllerShown, showingAgainReplacesThePanel)
{
    controller.show(content(), 680, 300);
    QPointer<FloatingPanel> first = controller.panel();
    controller.show(content(), 680, 120);
    EXPECT_NE(controller.panel(), first.data());
    EXPECT_EQ(controller.panel()->height(), 120);
    EXPECT_EQ(hides, 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !first; }));
}

TEST_F(PanelControllerShown, escapeAndLosingTheKeyboardBothHide)
{
    for (const bool byEscape : {true, false}) {
        hides = 0;
        controller.show(content(), 400, 200);
        QPointer<FloatingPanel> panel = controller.panel();
        ASSERT_TRUE(QTest::qWaitForWindowActive(panel));
        QWidget other;
        if (byEscape) {
            QTest::keyClick(panel, Qt::Key_Escape);
        } else {
            other.show();
            other.activateWindow();
            ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
        }
        EXPECT_FALSE(controller.panel()) << byEscape;
        EXPECT_EQ(hides, 1) << byEscape;
        EXPECT_TRUE(QTest::qWaitFor([&] { return !panel; }));
    }
}

TEST_F(PanelControllerShown, isCutToItsCornersOnlyWhereNothingComposites)
{
    for (const bool composited : {true, false}) {
        desktop.setComposited(composited);
        controller.show(content(), 400, 200);
        controller.setHeight(300);
        const QRegion mask = controller.panel()->mask();
        EXPECT_EQ(mask.isEmpty(), composited);
        if (!composited) {
            EXPECT_FALSE(mask.contains(QPoint(0, 0)));
            EXPECT_FALSE(mask.contains(QPoint(0, 299))) << "cut again at the new height";
            EXPECT_TRUE(mask.contains(QPoint(200, 299)));
        }
    }
}

TEST_F(PanelControllerShown, aPressOutsideHidesButOneInsideDoesNot)
{
    controller.show(content(), 400, 200);
    QCursor::setPos(controller.panel()->geometry().center());
    desktop.pressLeft();
    EXPECT_TRUE(controller.isVisible());
    QCursor::setPos(controller.panel()->geometry().bottomRight() + QPoint(5, 5));
    desktop.pressLeft();
    EXPECT_FALSE(controller.panel());
    EXPECT_EQ(hides, 1);

    controller.show(content(), 400, 200);
    EXPECT_EQ(desktop.mouseListeners(), 1) << "one listener for every panel shown";
}

TEST_F(PanelControllerShown, hidingEndsSubscriptionsAndRunsOnHideOnce)
{
    QObject source;
    int received = 0;
    controller.show(content(), 400, 200);
    controller.addSubscription(QObject::connect(&source, &QObject::objectNameChanged, [&] { ++received; }));
    source.setObjectName(QStringLiteral("a"));
    controller.hide();
    controller.hide();
    source.setObjectName(QStringLiteral("b"));
    EXPECT_EQ(received, 1);
    EXPECT_EQ(hides, 1);
    EXPECT_FALSE(controller.isVisible());
}

TEST(PanelControllerLifetime, aGoneControllerTakesItsPanelAlong)
{
    QPointer<FloatingPanel> panel;
    {
        FakeDesktop desktop;
        FakeKeystrokeSender keystrokes;
        PanelController controller({desktop, keystrokes});
        controller.show(new QLabel, 300, 100);
        panel = controller.panel();
        ASSERT_TRUE(QTest::qWaitForWindowActive(panel));
    }
    EXPECT_FALSE(panel);
}

} // namespace
} // namespace tessary

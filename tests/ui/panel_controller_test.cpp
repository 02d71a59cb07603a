#include "ui/panel_controller.h"

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

class PanelControllerShown : public ::testing::Test {
protected:
    static QLabel *content() { return new QLabel(QStringLiteral("content")); }

    void activate(QWidget &other)
    {
        other.show();
        other.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    }

    PanelController controller;
    int hides = 0;

    void SetUp() override
    {
        controller.onHide = [this] { ++hides; };
    }
};

TEST_F(PanelControllerShown, showsTheContentAtItsSizeOnThePointersScreen)
{
    QCursor::setPos(QGuiApplication::primaryScreen()->geometry().center());
    controller.show(content(), 580, 440);
    ASSERT_TRUE(controller.panel());
    EXPECT_TRUE(controller.isVisible());
    const QScreen *screen = QGuiApplication::primaryScreen();
    EXPECT_EQ(controller.panel()->geometry(),
        PanelController::placement({{screen->geometry(), screen->availableGeometry()}}, 0, QCursor::pos(), {580, 440}));
    EXPECT_TRUE(QTest::qWaitForWindowActive(controller.panel()));
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
        if (byEscape)
            QTest::keyClick(panel, Qt::Key_Escape);
        else
            activate(other);
        EXPECT_FALSE(controller.panel()) << byEscape;
        EXPECT_EQ(hides, 1) << byEscape;
        EXPECT_TRUE(QTest::qWaitFor([&] { return !panel; }));
    }
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
        PanelController controller;
        controller.show(new QLabel, 300, 100);
        panel = controller.panel();
        ASSERT_TRUE(QTest::qWaitForWindowActive(panel));
    }
    EXPECT_FALSE(panel);
}

} // namespace
} // namespace tessary

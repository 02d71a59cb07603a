#include "ui/toast.h"

#include <QGuiApplication>
#include <QPointer>
#include <QScreen>
#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

namespace tessary {
namespace {

struct WidthCase {
    QString text;
    int width;
};

TEST(Toast, widthIsEightPerCharacterPlusFiftyWithinLimits)
{
    const WidthCase cases[] = {
        {QString(), 200},
        {QStringLiteral("0123456789"), 200},   // 130 raised to the minimum
        {QString(19, QLatin1Char('x')), 202},  // first width above the minimum
        {QString(58, QLatin1Char('x')), 514},  // last width below the maximum
        {QString(59, QLatin1Char('x')), 520},  // 522 capped
        {QString(100, QLatin1Char('x')), 520}, // 850 capped
        // Characters as the reader counts them, not UTF-16 units.
        {QString::fromUtf16(u"e\u0301").repeated(30), 290},
        {QString::fromUtf16(u"👍").repeated(30), 290},
    };
    for (const WidthCase &c : cases)
        EXPECT_EQ(Toast::widthFor(c.text), c.width) << c.text.size();
}

TEST(Toast, sitsCentredNinetyAboveTheBottomOfTheAvailableArea)
{
    const struct {
        QRect available;
        int width;
        QRect frame;
    } cases[] = {
        {{0, 0, 1920, 1080}, 200, {860, 946, 200, 44}},
        {{0, 0, 1920, 1050}, 520, {700, 916, 520, 44}},
        {{1920, 0, 1440, 900}, 202, {2539, 766, 202, 44}},
        {{100, 30, 800, 600}, 200, {400, 496, 200, 44}},
    };
    for (const auto &c : cases)
        EXPECT_EQ(Toast::frameOn(c.available, c.width), c.frame) << c.available.x() << "," << c.available.y();
}

TEST(Toast, showsOnThePrimaryScreenWithoutTakingFocus)
{
    Toast::show(QStringLiteral("Left half"), 5);
    QWidget *toast = Toast::current();
    ASSERT_TRUE(toast);
    EXPECT_TRUE(toast->isVisible());
    EXPECT_FALSE(toast->isActiveWindow());
    EXPECT_EQ(toast->geometry(), Toast::frameOn(QGuiApplication::primaryScreen()->availableGeometry(), 200));
}

TEST(Toast, newerToastReplacesOlderAndOutlivesItsTimer)
{
    Toast::show(QStringLiteral("first"), 0.15);
    QPointer<QWidget> first = Toast::current();
    Toast::show(QStringLiteral("second"), 5);
    QPointer<QWidget> second = Toast::current();
    ASSERT_TRUE(first);
    EXPECT_NE(first, second);
    EXPECT_FALSE(first->isVisible());

    QTest::qWait(400);
    EXPECT_FALSE(first);
    ASSERT_TRUE(second);
    EXPECT_TRUE(second->isVisible());
    EXPECT_EQ(Toast::current(), second);
}

TEST(Toast, hidesItselfWhenItsTimeIsUp)
{
    Toast::show(QStringLiteral("brief"), 0.05);
    QPointer<QWidget> toast = Toast::current();
    ASSERT_TRUE(toast);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !toast; }, 2000));
    EXPECT_EQ(Toast::current(), nullptr);
}

} // namespace
} // namespace tessary

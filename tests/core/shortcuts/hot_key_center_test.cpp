#include "core/shortcuts/hot_key_center.h"

#include "platform/fake/windows/fake_hot_key_service.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <ostream>

#include <limits>
#include <memory>

namespace tessary {
namespace {

constexpr quint32 allModifiers = KeyCombo::control | KeyCombo::option | KeyCombo::shift | KeyCombo::command;
const KeyCombo f12{111, allModifiers};
const KeyCombo launcherDefault{49, KeyCombo::control | KeyCombo::option};
const KeyCombo clipboardDefault{9, KeyCombo::control | KeyCombo::option};
const KeyCombo leftHalfDefault{123, KeyCombo::control | KeyCombo::option};

void runPendingEvents() { QCoreApplication::processEvents(); }

class HotKeyCenterTest : public ::testing::Test {
protected:
    std::function<void()> counting(int &count)
    {
        return [&count] { ++count; };
    }

    FakeHotKeyService service;
    HotKeyCenter center{service};
};

TEST_F(HotKeyCenterTest, idsStartAtOneAndOnlySuccessfulRegistrationsConsumeThem)
{
    service.holdByOtherApp(clipboardDefault);
    EXPECT_EQ(center.registerHotKey(f12, [] {}), 1u);
    EXPECT_EQ(center.registerHotKey(f12, [] {}), std::nullopt);
    EXPECT_EQ(center.registerHotKey(clipboardDefault, [] {}), std::nullopt);
    EXPECT_EQ(center.registerHotKey(launcherDefault, [] {}), 2u);
    EXPECT_EQ(center.registerHotKey(leftHalfDefault, [] {}), 3u);
    EXPECT_FALSE(service.isRegistered(clipboardDefault));
}

TEST_F(HotKeyCenterTest, aPressRunsItsHandlerOnALaterTurnOfTheEventLoop)
{
    int launcher = 0;
    int leftHalf = 0;
    center.registerHotKey(launcherDefault, counting(launcher));
    center.registerHotKey(leftHalfDefault, counting(leftHalf));

    ASSERT_TRUE(service.press(launcherDefault));
    EXPECT_EQ(launcher, 0);
    runPendingEvents();
    EXPECT_EQ(launcher, 1);
    EXPECT_EQ(leftHalf, 0);
}

TEST_F(HotKeyCenterTest, unregisterAllReleasesEverythingAndIdsKeepGrowing)
{
    int fired = 0;
    center.registerHotKey(f12, counting(fired));
    center.registerHotKey(launcherDefault, counting(fired));
    center.unregisterAll();
    EXPECT_EQ(service.registrationCount(), 0);
    EXPECT_FALSE(service.press(f12));

    // An event the platform queued before the unregistration finds no handler.
    service.deliverPressed(1);
    runPendingEvents();
    EXPECT_EQ(fired, 0);

    EXPECT_EQ(center.registerHotKey(f12, counting(fired)), 3u);
    service.press(f12);
    runPendingEvents();
    EXPECT_EQ(fired, 1);
}

TEST(HotKeyCenterLifetime, destructionReleasesRegistrationsAndDropsPendingHandlers)
{
    FakeHotKeyService service;
    int fired = 0;
    auto center = std::make_unique<HotKeyCenter>(service);
    center->registerHotKey(f12, [&fired] { ++fired; });
    service.press(f12);
    center.reset();
    runPendingEvents();
    service.deliverPressed(1);
    EXPECT_EQ(fired, 0);
    EXPECT_EQ(service.registrationCount(), 0);
}

TEST(HotKeyCenterIds, pastTheLargestIdNumberingWrapsToOneSkippingZero)
{
    FakeHotKeyService service;
    constexpr quint32 last = std::numeric_limits<quint32>::max();
    HotKeyCenter center(service, last);
    int fired = 0;
    EXPECT_EQ(center.registerHotKey(f12, [] {}), last);
    EXPECT_EQ(center.registerHotKey(launcherDefault, [&fired] { ++fired; }), 1u);
    service.press(launcherDefault);
    runPendingEvents();
    EXPECT_EQ(fired, 1);
}

struct UnusedIdCase {
    const char *name;
    friend void PrintTo(const UnusedIdCase &c, std::ostream *os) { *os << c.name; }
    quint32 next;
    QList<quint32> live;
    quint32 expected;
};

class UnusedIds : public ::testing::TestWithParam<UnusedIdCase> { };

TEST_P(UnusedIds, neverLandOnZeroOrOnALiveId)
{
    const UnusedIdCase &c = GetParam();
    EXPECT_EQ(HotKeyCenter::unusedId(c.next, QSet<quint32>(c.live.cbegin(), c.live.cend())), c.expected);
}

constexpr quint32 maxId = std::numeric_limits<quint32>::max();

INSTANTIATE_TEST_SUITE_P(Cases, UnusedIds,
    ::testing::Values(UnusedIdCase{"nextIsFree", 7, {1, 2, 3}, 7}, UnusedIdCase{"lastIdIsFree", maxId, {1}, maxId},
        UnusedIdCase{"wrappedSkipsZero", 0, {}, 1}, UnusedIdCase{"wrappedSkipsLiveIds", 0, {1, 2, 4}, 3},
        UnusedIdCase{"liveLastIdWrapsPastLiveOnes", maxId, {maxId, 1}, 2}),
    [](const auto &p) { return std::string(p.param.name); });

} // namespace
} // namespace tessary

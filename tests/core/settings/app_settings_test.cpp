#include "core/settings/app_settings.h"

#include "core/json/strict_json.h"
#include "platform/fake/memory_key_value_store.h"

#include <QJsonObject>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace tessary {
namespace {

const QString key = QString::fromLatin1(AppSettings::storageKey);

TEST(AppSettings, anEmptyDomainLoadsDefaultsThatDontCollideWithoutWriting)
{
    MemoryKeyValueStore domain;
    AppSettings settings(domain);
    EXPECT_EQ(settings.data(), SettingsData());
    EXPECT_TRUE(settings.duplicates().isEmpty());
    EXPECT_FALSE(domain.contains(key));
}

TEST(AppSettings, changesSurviveANewStoreOverTheSameDomain)
{
    MemoryKeyValueStore domain;
    {
        AppSettings settings(domain);
        settings.set(KeyCombo{4, 6144}, HotAction::leftHalf);
        settings.set(std::nullopt, HotAction::rightHalf);
        SettingsData data = settings.data();
        data.gap = 8;
        settings.setData(data);
    }
    AppSettings reloaded(domain);
    EXPECT_EQ(reloaded.combo(HotAction::leftHalf), (KeyCombo{4, 6144}));
    EXPECT_EQ(reloaded.combo(HotAction::rightHalf), std::nullopt);
    EXPECT_EQ(reloaded.data().gap, 8);
}

TEST(AppSettings, aRecordMissingOneMemberFallsBackAsAWhole)
{
    MemoryKeyValueStore domain;
    SettingsData changed;
    changed.gap = 12;
    changed.dragSnap = false;
    QJsonObject object = *StrictJson::parseObject(changed.toJson());
    object.remove(QLatin1String("webSearches"));
    domain.setBytes(key, StrictJson::compact(object));

    AppSettings settings(domain);
    EXPECT_EQ(settings.data(), SettingsData());
}

TEST(AppSettings, undecodableRecordsGiveDefaultsAndAreKeptUntilTheNextOneReplacesThem)
{
    const QString kept = QString::fromLatin1(AppSettings::unreadableKey);
    for (const QByteArray &stored :
        {QByteArray("not json"), QByteArray("[]"), QByteArray(R"({"shortcuts":{"leftHalf":{"keyCode":4}}})")}) {
        MemoryKeyValueStore domain;
        domain.setBytes(key, stored);
        AppSettings settings(domain);
        EXPECT_EQ(settings.data(), SettingsData()) << stored.constData();
        EXPECT_EQ(domain.bytes(kept), stored) << stored.constData();
        SettingsData changed;
        changed.gap = 4;
        settings.setData(changed);
        EXPECT_EQ(domain.bytes(kept), stored) << "a change leaves the kept record alone";
    }
    MemoryKeyValueStore domain;
    domain.setBytes(key, SettingsData().toJson());
    AppSettings settings(domain);
    EXPECT_EQ(domain.bytes(kept), std::nullopt) << "a good record is not copied";
}

TEST(AppSettings, everyMemberOfACollidingGroupIsADuplicateAndResetClearsThem)
{
    MemoryKeyValueStore domain;
    AppSettings settings(domain);
    settings.set(std::nullopt, HotAction::rightHalf);
    settings.set(KeyCombo{126, 6144}, HotAction::bottomHalf); // topHalf's default
    settings.set(KeyCombo{126, 6144}, HotAction::clipboard);
    EXPECT_EQ(
        settings.duplicates(), (QSet<HotAction>{HotAction::topHalf, HotAction::bottomHalf, HotAction::clipboard}));

    settings.resetShortcuts();
    EXPECT_EQ(settings.combo(HotAction::bottomHalf), defaultCombo(HotAction::bottomHalf));
    EXPECT_EQ(settings.combo(HotAction::rightHalf), defaultCombo(HotAction::rightHalf));
    EXPECT_TRUE(settings.duplicates().isEmpty());
}

TEST(AppSettings, clearedActionsNeverCollide)
{
    MemoryKeyValueStore domain;
    AppSettings settings(domain);
    settings.set(std::nullopt, HotAction::leftHalf);
    settings.set(defaultCombo(HotAction::leftHalf), HotAction::maximize);
    // maximize now has leftHalf's default, but leftHalf is cleared.
    EXPECT_TRUE(settings.duplicates().isEmpty());
}

TEST(AppSettings, settingTheDefaultLeavesNoCustomEntry)
{
    MemoryKeyValueStore domain;
    AppSettings settings(domain);
    settings.set(KeyCombo{4, 6144}, HotAction::leftHalf);
    ASSERT_TRUE(settings.data().shortcuts.contains(QStringLiteral("leftHalf")));
    settings.set(defaultCombo(HotAction::leftHalf), HotAction::leftHalf);
    EXPECT_TRUE(settings.data().shortcuts.isEmpty());

    settings.set(KeyCombo{4, 6144}, HotAction::leftHalf);
    settings.set(std::nullopt, HotAction::leftHalf);
    EXPECT_TRUE(settings.data().shortcuts.isEmpty());
    EXPECT_TRUE(settings.data().disabled.contains(QStringLiteral("leftHalf")));
}

TEST(AppSettings, onlyEffectiveChangesSaveAndNotify)
{
    MemoryKeyValueStore domain;
    AppSettings settings(domain);
    int calls = 0;
    settings.onChange = [&] { ++calls; };
    QSignalSpy changed(&settings, &AppSettings::changed);

    settings.setData(settings.data());
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(domain.writeCount(), 0);

    // Clearing an action with a custom entry is two separate changes.
    settings.set(KeyCombo{4, 6144}, HotAction::leftHalf);
    EXPECT_EQ(calls, 1);
    settings.set(std::nullopt, HotAction::leftHalf);
    EXPECT_EQ(calls, 3);
    EXPECT_EQ(changed.count(), 3);
    // The three changes land in one write.
    EXPECT_EQ(domain.writeCount(), 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return domain.writeCount() == 1; }));
    EXPECT_EQ(AppSettings(domain).combo(HotAction::leftHalf), std::nullopt);
    QTest::qWait(int(AppSettings::saveDelay.count()));
    EXPECT_EQ(domain.writeCount(), 1);
}

TEST(SettingsData, jsonRoundTripsEveryField)
{
    SettingsData data;
    data.shortcuts.insert(QStringLiteral("leftHalf"), KeyCombo{4, 6144});
    data.disabled = {QStringLiteral("rightHalf"), QStringLiteral("center")};
    data.gap = 8.5;
    data.dragSnap = false;
    data.clipboardEnabled = false;
    data.clipboardMax = 50;
    data.clipboardRetentionDays = 0;
    data.clipboardExcluded = {QStringLiteral("org.example.vault")};
    data.launcherFiles = false;
    data.launcherSystem = false;
    data.webSearches.removeFirst();
    EXPECT_EQ(SettingsData::fromJson(data.toJson()), data);

    const QJsonObject stored = *StrictJson::parseObject(data.toJson());
    EXPECT_EQ(stored.size(), 11);
    const QString id = stored.value(QLatin1String("webSearches")).toArray().first()[QLatin1String("id")].toString();
    EXPECT_EQ(id, id.toUpper());
    EXPECT_EQ(id.size(), 36);
}

TEST(WebSearch, invalidIdIsADecodingError)
{
    QJsonObject object = WebSearch::defaults().first().toJson();
    object.insert(QLatin1String("id"), QStringLiteral("not-a-uuid"));
    EXPECT_FALSE(WebSearch::fromJson(object));
    object.remove(QLatin1String("id"));
    EXPECT_FALSE(WebSearch::fromJson(object));
}

} // namespace
} // namespace tessary

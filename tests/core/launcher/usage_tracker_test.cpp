#include "core/launcher/usage_tracker.h"

#include "platform/fake/memory_key_value_store.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Qt::StringLiterals;

namespace tessary {
namespace {

const QString key = QString::fromLatin1(UsageTracker::storageKey);
const QString notes = QStringLiteral("app-/Applications/Notes.app");

TEST(UsageTracker, recordCountsAndWritesThrough)
{
    MemoryKeyValueStore defaults;
    UsageTracker tracker(defaults);
    EXPECT_TRUE(tracker.topIDs().isEmpty());
    EXPECT_EQ(tracker.count(notes), 0);
    EXPECT_FALSE(defaults.contains(key)) << "loading must not write";

    tracker.record(notes);
    EXPECT_EQ(tracker.count(notes), 1);
    EXPECT_EQ(defaults.intMap(key), (QHash<QString, int>{{notes, 1}}));
}

TEST(UsageTracker, aStoredValueOfAnotherTypeStartsEmptyAndIsOverwritten)
{
    MemoryKeyValueStore defaults;
    defaults.setBytes(key, QByteArray("not a dictionary"));
    UsageTracker tracker(defaults);
    EXPECT_TRUE(tracker.topIDs().isEmpty());
    tracker.record(notes);
    EXPECT_EQ(defaults.intMap(key), (QHash<QString, int>{{notes, 1}}));
}

TEST(UsageTracker, topIDsAreOrderedByCountThenId)
{
    MemoryKeyValueStore defaults;
    defaults.setIntMap(
        key, {{QStringLiteral("b"), 2}, {QStringLiteral("a"), 2}, {QStringLiteral("c"), 7}, {QStringLiteral("d"), 1}});
    UsageTracker tracker(defaults);
    EXPECT_EQ(tracker.topIDs(), (QStringList{u"c"_s, u"a"_s, u"b"_s, u"d"_s}));
    tracker.record(QStringLiteral("d"));
    EXPECT_EQ(tracker.topIDs(), (QStringList{u"c"_s, u"a"_s, u"b"_s, u"d"_s}));
    tracker.record(QStringLiteral("d"));
    EXPECT_EQ(tracker.topIDs(), (QStringList{u"c"_s, u"d"_s, u"a"_s, u"b"_s}));
}

TEST(UsageTracker, theLargestCountStaysPositive)
{
    MemoryKeyValueStore defaults;
    defaults.setIntMap(key, {{notes, std::numeric_limits<int>::max()}});
    UsageTracker tracker(defaults);
    tracker.record(notes);
    EXPECT_EQ(tracker.count(notes), std::numeric_limits<int>::max());
}

} // namespace
} // namespace tessary

#include "core/platform/settings_key_value_store.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tessary {
namespace {

TEST(SettingsKeyValueStore, valuesOfEveryKindPersistAcrossInstances)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("defaults.ini"));
    const QByteArray record(R"({"gap":8,"bytes":"\u0000\u00ff"})");
    {
        SettingsKeyValueStore store(path);
        store.setBytes(QStringLiteral("tessary.settings.v1"), record);
        store.setBoolean(QStringLiteral("tessary.askedAccessibility"), true);
        store.setIntMap(QStringLiteral("tessary.launcher.usage"), {{QStringLiteral("app:/x.desktop"), 3}});
    }
    SettingsKeyValueStore store(path);
    EXPECT_EQ(store.bytes(QStringLiteral("tessary.settings.v1")), record);
    EXPECT_EQ(store.boolean(QStringLiteral("tessary.askedAccessibility")), true);
    const auto usage = store.intMap(QStringLiteral("tessary.launcher.usage"));
    ASSERT_TRUE(usage);
    EXPECT_EQ(usage->value(QStringLiteral("app:/x.desktop")), 3);

    store.remove(QStringLiteral("tessary.askedAccessibility"));
    EXPECT_EQ(SettingsKeyValueStore(path).boolean(QStringLiteral("tessary.askedAccessibility")), std::nullopt);
    EXPECT_EQ(store.bytes(QStringLiteral("absent")), std::nullopt);
}

} // namespace
} // namespace tessary

#include "core/platform/settings_file_format.h"
#include "core/platform/settings_key_value_store.h"

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tessary {
namespace {

QSettings::SettingsMap readText(const QByteArray &text)
{
    QBuffer buffer;
    buffer.setData(text);
    buffer.open(QIODevice::ReadOnly);
    QSettings::SettingsMap map;
    EXPECT_TRUE(SettingsFileFormat::read(buffer, map));
    return map;
}

TEST(SettingsKeyValueStore, valuesOfEveryKindPersistAcrossInstances)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("defaults.conf"));
    const QByteArray record(R"({"gap":8,"bytes":"\u0000\u00ff", "x": "a;b=c"})");
    const QByteArray controls = QByteArrayLiteral("\0\x01\n\r\t\\\"\x7f\x80\xff 9 a");
    {
        SettingsKeyValueStore store(path);
        store.setBytes(QStringLiteral("tessary.settings.v1"), record);
        store.setBytes(QStringLiteral("every byte"), controls);
        store.setBoolean(QStringLiteral("tessary.askedAccessibility"), true);
        store.setIntMap(QStringLiteral("tessary.launcher.usage"), {{QStringLiteral("app:/x.desktop"), 3}});
    }
    SettingsKeyValueStore store(path);
    EXPECT_EQ(store.bytes(QStringLiteral("tessary.settings.v1")), record);
    EXPECT_EQ(store.bytes(QStringLiteral("every byte")), controls);
    EXPECT_EQ(store.boolean(QStringLiteral("tessary.askedAccessibility")), true);
    const auto usage = store.intMap(QStringLiteral("tessary.launcher.usage"));
    ASSERT_TRUE(usage);
    EXPECT_EQ(usage->value(QStringLiteral("app:/x.desktop")), 3);

    store.remove(QStringLiteral("tessary.askedAccessibility"));
    EXPECT_EQ(SettingsKeyValueStore(path).boolean(QStringLiteral("tessary.askedAccessibility")), std::nullopt);
    EXPECT_EQ(store.bytes(QStringLiteral("absent")), std::nullopt);
}

// What Qt's own INI format wrote reads the same; its serialized variants are never decoded.
TEST(SettingsFileFormat, readsQtsIniWithoutDecodingVariants)
{
    const QSettings::SettingsMap map = readText(QByteArrayLiteral(
        "[General]\n"
        "tessary.settings.v1=\"@ByteArray({\\\"a\\\":1,\\\"b\\\":\\\"x y\\\\\\\\\\\"}\\n\\x1 ;=\\xc3\\xa9)\"\r\n"
        "flag=true ; a comment\n"
        "text=\"@@at, sign \" \n"
        "usage=@Variant(\\0\\0\\0\\b\\xff\\xff\\xff\\xff\\0\\0)\n"
        "; comment\n"
        "no value line\n"
        "[grp]\n"
        "sub%20key%25\\x%U00E9=1\n"));
    EXPECT_EQ(map.value(QStringLiteral("tessary.settings.v1")).toByteArray(),
        QByteArray("{\"a\":1,\"b\":\"x y\\\\\"}\n\x01 ;=\xc3\xa9"));
    EXPECT_EQ(map.value(QStringLiteral("flag")), QVariant(QStringLiteral("true")));
    EXPECT_EQ(map.value(QStringLiteral("text")), QVariant(QStringLiteral("@at, sign ")));
    EXPECT_FALSE(map.contains(QStringLiteral("usage")));
    EXPECT_EQ(map.value(QString::fromUtf16(u"grp/sub key%/x\u00E9")), QVariant(QStringLiteral("1")));
    EXPECT_EQ(map.size(), 4);
}

TEST(SettingsFileFormat, writesWhatItReadsBack)
{
    QSettings::SettingsMap map;
    map.insert(QStringLiteral("bytes"),
        QByteArray("\0\x01\xff"
                   "abc\"\\",
            8));
    map.insert(QStringLiteral("@text"),
        QString::fromUtf16(u"@ \u00E9\u4E2D\U0001F600 \x1"
                           "f\xD800 ; = , "));
    map.insert(QStringLiteral("group/key with/slash"), true);
    map.insert(QStringLiteral("number"), 42);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    ASSERT_TRUE(SettingsFileFormat::write(buffer, map));
    const QSettings::SettingsMap back = readText(buffer.data());
    EXPECT_EQ(back.value(QStringLiteral("bytes")), map.value(QStringLiteral("bytes")));
    EXPECT_EQ(back.value(QStringLiteral("@text")), map.value(QStringLiteral("@text")));
    EXPECT_EQ(back.value(QStringLiteral("group/key with/slash")), QVariant(QStringLiteral("true")));
    EXPECT_EQ(back.value(QStringLiteral("number")), QVariant(QStringLiteral("42")));
}

} // namespace
} // namespace tessary

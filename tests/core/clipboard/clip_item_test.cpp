#include "core/clipboard/clip_item.h"

#include "core/clipboard/clipboard_store.h"
#include "core/json/strict_json.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

namespace tessary {
namespace {

ClipItem textItem(std::optional<QString> text)
{
    ClipItem item;
    item.id = QUuid::createUuid();
    item.kind = ClipItem::Kind::text;
    item.text = std::move(text);
    item.date = QDateTime::currentDateTimeUtc();
    item.hash = ClipboardStore::hash(QStringLiteral("text"), item.text.value_or(QString()));
    return item;
}

ClipItem filesItem(std::optional<QStringList> files)
{
    ClipItem item = textItem(std::nullopt);
    item.kind = ClipItem::Kind::files;
    item.files = std::move(files);
    return item;
}

QString repeated(const QString &piece, int times) { return piece.repeated(times); }

struct TitleCase {
    const char *name;
    QString text;
    QString title;
};

TEST(ClipItemTitle, textTakesTheFirstNonEmptyLineTrimmedAndCut)
{
    const QString a140 = repeated(QStringLiteral("a"), 140);
    // "e" + combining acute: one user-perceived character in two code units.
    const QString accented = QStringLiteral("e\u0301");
    const QString flag = QStringLiteral("\U0001F1EB\U0001F1F7");
    const TitleCase cases[] = {
        {"leading spaces and a second line", QStringLiteral("  hello world  \nsecond line"),
            QStringLiteral("hello world")},
        {"empty lines first", QStringLiteral("\n\nhello"), QStringLiteral("hello")},
        {"carriage return + line feed", QStringLiteral("\r\n\r\nfirst\r\nsecond"), QStringLiteral("first")},
        {"vertical tab and form feed", QStringLiteral("\v\fone\vtwo"), QStringLiteral("one")},
        {"next line", QStringLiteral("\u0085one\u0085two"), QStringLiteral("one")},
        {"line and paragraph separators", QStringLiteral("\u2028one\u2029two"), QStringLiteral("one")},
        {"a blank first line is not skipped", QStringLiteral("   \nhello"), QString()},
        {"tab, no-break and ideographic spaces trimmed", QStringLiteral("\t\u00a0\u3000word\u3000\t"),
            QStringLiteral("word")},
        {"only newlines", QStringLiteral("\n\r\n"), QString()},
        {"exactly 140 characters", a140, a140},
        {"200 characters", repeated(QStringLiteral("a"), 200), a140 + u'…'},
        {"140 clusters of two code units", repeated(accented, 140), repeated(accented, 140)},
        {"141 clusters of two code units", repeated(accented, 141), repeated(accented, 140) + u'…'},
        {"140 flags of four code units", repeated(flag, 140), repeated(flag, 140)},
        {"141 flags", repeated(flag, 141), repeated(flag, 140) + u'…'},
        {"cut counts after trimming", QStringLiteral("   ") + a140 + QStringLiteral("   "), a140},
    };
    for (const TitleCase &c : cases)
        EXPECT_EQ(textItem(c.text).title(), c.title) << c.name;
}

TEST(ClipItemTitle, absentContentGivesAnEmptyTitle)
{
    EXPECT_EQ(textItem(std::nullopt).title(), QString());
    EXPECT_EQ(filesItem(std::nullopt).title(), QString());
    EXPECT_EQ(filesItem(QStringList()).title(), QString());
}

TEST(ClipItemTitle, imageShowsItsPixelSize)
{
    ClipItem item = textItem(std::nullopt);
    item.kind = ClipItem::Kind::image;
    item.pixelWidth = 800;
    item.pixelHeight = 600;
    EXPECT_EQ(item.title(), QStringLiteral("Image 800×600"));
}

TEST(ClipItemTitle, filesListTheirNames)
{
    const struct {
        QStringList files;
        QString title;
    } cases[] = {
        {{QStringLiteral("/tmp/a.txt")}, QStringLiteral("a.txt")},
        {{QStringLiteral("/tmp/a.txt"), QStringLiteral("/tmp/b.txt")}, QStringLiteral("a.txt, b.txt")},
        {{QStringLiteral("/tmp/a.txt"), QStringLiteral("/tmp/b.txt"), QStringLiteral("/tmp/c.txt")},
            QStringLiteral("a.txt, b.txt and 1 more")},
        {{QStringLiteral("/tmp/a.txt"), QStringLiteral("/tmp/b.txt"), QStringLiteral("/tmp/c.txt"),
             QStringLiteral("/tmp/d.txt")},
            QStringLiteral("a.txt, b.txt and 2 more")},
        {{QStringLiteral("/home/u/Folder/"), QStringLiteral("/")}, QStringLiteral("Folder, /")},
    };
    for (const auto &c : cases)
        EXPECT_EQ(filesItem(c.files).title(), c.title) << c.files.join(u' ').toStdString();
}

TEST(ClipItemHash, isTheDigestOfTheKindWordFollowedByTheContent)
{
    const QString abc = ClipboardStore::hash(QStringLiteral("text"), QStringLiteral("abc"));
    EXPECT_EQ(abc, QStringLiteral("079c78de91949fcda96e4e0c8427e71e4dc90fe78da365a3340a247df7053ff8"));
    EXPECT_EQ(abc, ClipboardStore::hash(QStringLiteral("te"), QByteArray("xtabc")));
    EXPECT_NE(abc, ClipboardStore::hash(QStringLiteral("files"), QStringLiteral("abc")));
    EXPECT_EQ(ClipboardStore::hash(QStringLiteral("text"), QStringLiteral("é")),
        ClipboardStore::hash(QStringLiteral("text"), QByteArray("\xc3\xa9")))
        << "text is hashed as UTF-8";
}

TEST(ClipItemJson, textEntryLeavesAbsentOptionalsOutAndRoundTrips)
{
    const ClipItem item = textItem(QStringLiteral("hello"));
    const QJsonObject object = QJsonDocument::fromJson(item.toJson()).object();
    EXPECT_FALSE(object.contains(QLatin1String("imageFile")));
    EXPECT_FALSE(object.contains(QLatin1String("files")));
    EXPECT_FALSE(object.contains(QLatin1String("sourceApp")));
    EXPECT_EQ(object.value(QLatin1String("id")).toString(), item.id.toString(QUuid::WithoutBraces).toUpper());
    EXPECT_EQ(ClipItem::fromJson(object), item);
}

TEST(ClipItemJson, everyKindRoundTripsThroughTheHistoryFileForm)
{
    ClipItem text = textItem(QStringLiteral("\"quoted\" \\ back\tslash\r\n\x01\x1f\u007f é \u2028 😀"));
    text.sourceApp = QStringLiteral("org.kde.kate");
    text.pinned = true;
    ClipItem image = textItem(std::nullopt);
    image.kind = ClipItem::Kind::image;
    image.imageFile = QStringLiteral("0123456789abcdef01234567.png");
    image.pixelWidth = 4096;
    image.pixelHeight = 1;
    image.date = StrictJson::fromSecondsSinceReferenceDate(-12345.678);
    ClipItem files = filesItem(QStringList{QStringLiteral("/a b/c"), QStringLiteral("/d")});
    files.date = StrictJson::fromSecondsSinceReferenceDate(785'000'000);
    const QList<ClipItem> items{text, image, files};

    const QByteArray json = ClipItem::listToJson(items);
    EXPECT_FALSE(json.contains('\n') || json.contains(": ")) << "compact";
    EXPECT_EQ(ClipItem::listFromJson(json), items);
    EXPECT_EQ(ClipItem::listFromJson(ClipItem::listToJson({})), QList<ClipItem>());
}

TEST(ClipItemJson, decodingIsStrictAboutRequiredMembersAndLenientAboutTheRest)
{
    const QJsonObject valid = QJsonDocument::fromJson(textItem(QStringLiteral("t")).toJson()).object();
    const auto with = [&](const char *key, const QJsonValue &value) {
        QJsonObject object = valid;
        if (value.isUndefined())
            object.remove(QLatin1String(key));
        else
            object.insert(QLatin1String(key), value);
        return object;
    };
    const struct {
        const char *name;
        QJsonObject object;
        bool decodes;
    } cases[] = {
        {"unknown kind", with("kind", QStringLiteral("video")), false},
        {"no pinned", with("pinned", QJsonValue::Undefined), false},
        {"no hash", with("hash", QJsonValue::Undefined), false},
        {"no date", with("date", QJsonValue::Undefined), false},
        {"pinned as a number", with("pinned", 1), false},
        {"fractional pixel width", with("pixelWidth", 1.5), false},
        {"id not a UUID", with("id", QStringLiteral("not-a-uuid")), false},
        {"text of the wrong type", with("text", 5), false},
        {"files with a non-string", with("files", QJsonArray{QStringLiteral("/a"), 1}), false},
        {"null text counts as absent", with("text", QJsonValue::Null), true},
        {"null source app counts as absent", with("sourceApp", QJsonValue::Null), true},
        {"unknown keys are ignored", with("colour", QStringLiteral("red")), true},
    };
    for (const auto &c : cases)
        EXPECT_EQ(ClipItem::fromJson(c.object).has_value(), c.decodes) << c.name;

    EXPECT_EQ(ClipItem::fromJson(with("text", QJsonValue::Null))->text, std::nullopt);
}

TEST(ClipItemJson, onlyTheStoredFormOfAnImageNameDecodes)
{
    const struct {
        const char *name;
        bool valid;
    } cases[] = {
        {"0123456789abcdef01234567.png", true},
        {"0123456789ABCDEF01234567.png", false},
        {"0123456789abcdef0123456.png", false},
        {"0123456789abcdef012345678.png", false},
        {"0123456789abcdef01234567.PNG", false},
        {"0123456789abcdef0123456g.png", false},
        {"../456789abcdef01234567.png", false},
        {"/23456789abcdef01234567.png", false},
        {"../../victim.txt", false},
        {"", false},
    };
    for (const auto &c : cases) {
        ClipItem image = textItem(std::nullopt);
        image.kind = ClipItem::Kind::image;
        image.imageFile = QString::fromLatin1(c.name);
        const auto object = QJsonDocument::fromJson(image.toJson()).object();
        EXPECT_EQ(ClipItem::fromJson(object).has_value(), c.valid) << c.name;
    }
}

TEST(ClipItemJson, oneBadElementSpoilsTheWholeList)
{
    const QJsonObject good = QJsonDocument::fromJson(textItem(QStringLiteral("t")).toJson()).object();
    QJsonObject bad = good;
    bad.remove(QLatin1String("pinned"));
    EXPECT_TRUE(ClipItem::listFromJson(QJsonDocument(QJsonArray{good, good}).toJson()).has_value());
    EXPECT_FALSE(ClipItem::listFromJson(QJsonDocument(QJsonArray{good, bad}).toJson()).has_value());
    EXPECT_FALSE(ClipItem::listFromJson(QJsonDocument(QJsonArray{good, 3}).toJson()).has_value());
    EXPECT_FALSE(ClipItem::listFromJson(QJsonDocument(good).toJson()).has_value()) << "an object is not a list";
}

} // namespace
} // namespace tessary

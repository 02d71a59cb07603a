#include "core/clipboard/clip_item.h"

#include "core/clipboard/clipboard_store.h"
#include "core/json/strict_json.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

namespace tessary {
namespace {

using namespace Qt::StringLiterals;

ClipItem textItem(std::optional<QString> text)
{
    ClipItem item;
    item.id = QUuid::createUuid();
    item.kind = ClipItem::Kind::text;
    item.text = std::move(text);
    item.date = QDateTime::currentDateTimeUtc();
    item.hash = ClipboardStore::hash(u"text"_s, item.text.value_or(QString()));
    return item;
}

ClipItem filesItem(std::optional<QStringList> files)
{
    ClipItem item = textItem(std::nullopt);
    item.kind = ClipItem::Kind::files;
    item.files = std::move(files);
    return item;
}

struct TitleCase {
    const char *name;
    QString text;
    QString title;
};

TEST(ClipItemTitle, textTakesTheFirstNonEmptyLineTrimmedAndCut)
{
    const QString a140 = u"a"_s.repeated(140);
    // "e" + combining acute: one user-perceived character in two code units.
    const QString accented = u"e\u0301"_s;
    const TitleCase cases[] = {
        {"leading spaces and a second line", u"  hello world  \nsecond line"_s, u"hello world"_s},
        {"empty lines first", u"\n\nhello"_s, u"hello"_s},
        {"carriage return + line feed", u"\r\n\r\nfirst\r\nsecond"_s, u"first"_s},
        {"every other line break", u"\v\f\u0085\u2028one\u2029two"_s, u"one"_s},
        {"a blank first line is not skipped", u"   \nhello"_s, QString()},
        {"tab, no-break and ideographic spaces trimmed", u"\t\u00a0\u3000word\u3000\t"_s, u"word"_s},
        {"only newlines", u"\n\r\n"_s, QString()},
        {"exactly 140 characters", a140, a140},
        {"200 characters", u"a"_s.repeated(200), a140 + u'…'},
        {"140 clusters of two code units", accented.repeated(140), accented.repeated(140)},
        {"141 clusters of two code units", accented.repeated(141), accented.repeated(140) + u'…'},
        {"cut counts after trimming", u"   "_s + a140 + u"   "_s, a140},
    };
    for (const TitleCase &c : cases)
        EXPECT_EQ(textItem(c.text).title(), c.title) << c.name;
}

TEST(ClipItemTitle, absentContentGivesAnEmptyTitle)
{
    EXPECT_EQ(textItem(std::nullopt).title(), QString());
    EXPECT_EQ(filesItem(std::nullopt).title(), QString());
}

TEST(ClipItemTitle, filesListTheirNames)
{
    const struct {
        QStringList files;
        QString title;
    } cases[] = {
        {{u"/tmp/a.txt"_s}, u"a.txt"_s},
        {{u"/tmp/a.txt"_s, u"/tmp/b.txt"_s}, u"a.txt, b.txt"_s},
        {{u"/tmp/a.txt"_s, u"/tmp/b.txt"_s, u"/tmp/c.txt"_s}, u"a.txt, b.txt and 1 more"_s},
        {{u"/home/u/Folder/"_s, u"/"_s}, u"Folder, /"_s},
    };
    for (const auto &c : cases)
        EXPECT_EQ(filesItem(c.files).title(), c.title) << c.files.join(u' ').toStdString();
}

TEST(ClipItemHash, isTheDigestOfTheKindWordFollowedByTheContent)
{
    const QString abc = ClipboardStore::hash(u"text"_s, u"abc"_s);
    EXPECT_EQ(abc, u"079c78de91949fcda96e4e0c8427e71e4dc90fe78da365a3340a247df7053ff8"_s);
    EXPECT_EQ(ClipboardStore::hash(u"text"_s, u"é"_s), ClipboardStore::hash(u"text"_s, QByteArray("\xc3\xa9")))
        << "text is hashed as UTF-8";
}

TEST(ClipItemJson, everyKindRoundTripsThroughTheHistoryFileForm)
{
    ClipItem text = textItem(u"\"quoted\" \\ back\tslash\r\n\x01\x1f\u007f é \u2028 😀"_s);
    text.sourceApp = u"org.kde.kate"_s;
    text.pinned = true;
    ClipItem image = textItem(std::nullopt);
    image.kind = ClipItem::Kind::image;
    image.imageFile = u"0123456789abcdef01234567.png"_s;
    image.pixelWidth = 4096;
    image.pixelHeight = 1;
    image.date = StrictJson::fromSecondsSinceReferenceDate(-12345.678);
    ClipItem files = filesItem(QStringList{u"/a b/c"_s, u"/d"_s});
    files.date = StrictJson::fromSecondsSinceReferenceDate(785'000'000);
    const QList<ClipItem> items{text, image, files};

    const QByteArray json = ClipItem::listToJson(items);
    EXPECT_FALSE(json.contains('\n') || json.contains(": ")) << "compact";
    EXPECT_EQ(ClipItem::listFromJson(json), items);
    const QJsonObject imageObject = QJsonDocument::fromJson(image.toJson()).object();
    EXPECT_EQ(imageObject.value(QLatin1String("id")).toString(), image.id.toString(QUuid::WithoutBraces).toUpper());
    for (const char *absent : {"text", "files", "sourceApp"})
        EXPECT_FALSE(imageObject.contains(QLatin1String(absent))) << absent << " left out, not null";
}

TEST(ClipItemJson, decodingIsStrictAboutRequiredMembersAndLenientAboutTheRest)
{
    const QJsonObject valid = QJsonDocument::fromJson(textItem(u"t"_s).toJson()).object();
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
        {"unknown kind", with("kind", u"video"_s), false},
        {"no pinned", with("pinned", QJsonValue::Undefined), false},
        {"no hash", with("hash", QJsonValue::Undefined), false},
        {"no date", with("date", QJsonValue::Undefined), false},
        {"pinned as a number", with("pinned", 1), false},
        {"fractional pixel width", with("pixelWidth", 1.5), false},
        {"id not a UUID", with("id", u"not-a-uuid"_s), false},
        {"text of the wrong type", with("text", 5), false},
        {"files with a non-string", with("files", QJsonArray{u"/a"_s, 1}), false},
        {"null text counts as absent", with("text", QJsonValue::Null), true},
        {"null source app counts as absent", with("sourceApp", QJsonValue::Null), true},
        {"unknown keys are ignored", with("colour", u"red"_s), true},
    };
    for (const auto &c : cases)
        EXPECT_EQ(ClipItem::fromJson(c.object).has_value(), c.decodes) << c.name;
}

TEST(ClipItemJson, onlyTheStoredFormOfAnImageNameIsValid)
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
        {"", false},
    };
    for (const auto &c : cases)
        EXPECT_EQ(ClipItem::isImageFileName(QString::fromLatin1(c.name)), c.valid) << c.name;
}

TEST(ClipItemJson, oneBadElementSpoilsTheWholeList)
{
    const QJsonObject good = QJsonDocument::fromJson(textItem(u"t"_s).toJson()).object();
    QJsonObject bad = good;
    bad.remove(QLatin1String("pinned"));
    EXPECT_TRUE(ClipItem::listFromJson(QJsonDocument(QJsonArray{good, good}).toJson()).has_value());
    EXPECT_FALSE(ClipItem::listFromJson(QJsonDocument(QJsonArray{good, bad}).toJson()).has_value());
    EXPECT_FALSE(ClipItem::listFromJson(QJsonDocument(QJsonArray{good, 3}).toJson()).has_value());
    EXPECT_FALSE(ClipItem::listFromJson(QJsonDocument(good).toJson()).has_value()) << "an object is not a list";
}

} // namespace
} // namespace tessary

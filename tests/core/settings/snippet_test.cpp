#include "core/settings/snippet.h"

#include <QMap>
#include <QRegularExpression>
#include <QTimeZone>

#include <gtest/gtest.h>

namespace tessary {
namespace {

using namespace Qt::StringLiterals;

// 15 January 2027, 08:00 UTC.
const QDateTime moment = QDateTime::fromSecsSinceEpoch(1'800'000'000, QTimeZone::utc());
const QLocale enUS(QLocale::English, QLocale::UnitedStates);

QString expand(const QString &text, const QString &clipboard = u"PASTED"_s, const QLocale &locale = enUS)
{
    return Snippet{QUuid::createUuid(), u"n"_s, u"k"_s, text}.expanded(clipboard, moment, locale);
}

TEST(Snippet, placeholdersAreFilledIn)
{
    const QString result = expand(u"On {date} at {time}: {clipboard} / {datetime}"_s);
    EXPECT_FALSE(result.contains(u'{')) << result.toStdString();
    EXPECT_TRUE(result.contains(u"PASTED"_s));
    EXPECT_TRUE(result.contains(u"2027"_s));
}

TEST(Snippet, dateAndTimeUseTheLocalesMediumDateAndShortTime)
{
    // The zone is the system's; these patterns hold in any zone within a day of UTC.
    const QRegularExpression mediumDate(u"^Jan 1[456], 2027$"_s);
    const QRegularExpression shortTime(u"^\\d{1,2}:\\d{2}\\h[AP]M$"_s);
    const QRegularExpression both(u"^Jan 1[456], 2027, \\d{1,2}:\\d{2}\\h[AP]M$"_s);
    EXPECT_TRUE(mediumDate.match(expand(u"{date}"_s)).hasMatch()) << expand(u"{date}"_s).toStdString();
    EXPECT_TRUE(shortTime.match(expand(u"{time}"_s)).hasMatch()) << expand(u"{time}"_s).toStdString();
    EXPECT_TRUE(both.match(expand(u"{datetime}"_s)).hasMatch()) << expand(u"{datetime}"_s).toStdString();
    const QString german = expand(u"{date}"_s, {}, QLocale(QLocale::German, QLocale::Germany));
    EXPECT_TRUE(QRegularExpression(u"^1[456]\\.01\\.2027$"_s).match(german).hasMatch()) << german.toStdString();
}

TEST(Snippet, theUsersLocaleReachesTheDateStyles)
{
    // The launcher passes the user's locale; under "C" ICU falls back to its root patterns.
    const QMap<QString, QString> mediumDate{{u"de"_s, u"^1[456]\\.01\\.2027$"_s},
        {u"fr"_s, u"^1[456]\\hjanv\\.\\h2027$"_s}, {u"ru"_s, u"^1[456]\\hянв\\.\\h2027\\hг\\.$"_s},
        {u"ja"_s, u"^2027/01/1[456]$"_s}, {u"en"_s, u"^Jan\\h1[456],\\h2027$"_s}};
    const QLocale user;
    const QString language = user.name().section(u'_', 0, 0);
    if (!mediumDate.contains(language))
        GTEST_SKIP() << "no expectation for " << user.name().toStdString();
    const QString date = expand(u"{date}"_s, {}, user);
    EXPECT_TRUE(QRegularExpression(mediumDate.value(language)).match(date).hasMatch()) << date.toStdString();
}

TEST(Snippet, onlyExactPlaceholdersAreReplaced)
{
    const QString unchanged[] = {u"plain text"_s, u"{Date}"_s, u"{foo}"_s, u"{ date }"_s, u"{{"_s, u""_s};
    for (const QString &text : unchanged)
        EXPECT_EQ(expand(text), text);
    EXPECT_EQ(expand(u"{clipboard}{clipboard}"_s, u"ab"_s), u"abab"_s);
}

TEST(Snippet, clipboardTextIsInsertedLiterally)
{
    EXPECT_EQ(expand(u"<{clipboard}>"_s, u"{time} {date}"_s), u"<{time} {date}>"_s);
}

TEST(Snippet, jsonRoundTripsAndDecodesStrictly)
{
    const Snippet snippet{QUuid::createUuid(), u"Address"_s, u"addr"_s, u"1 Infinite Loop\n"_s};
    EXPECT_EQ(Snippet::fromJson(snippet.toJson()), snippet);
    EXPECT_EQ(snippet.toJson().value(u"id"_s).toString(), snippet.id.toString(QUuid::WithoutBraces).toUpper());

    QJsonObject extra = snippet.toJson();
    extra.insert(u"color"_s, u"red"_s);
    EXPECT_EQ(Snippet::fromJson(extra), snippet) << "unknown members are ignored";

    for (const char *member : {"id", "name", "keyword", "text"}) {
        QJsonObject missing = snippet.toJson();
        missing.remove(QLatin1String(member));
        EXPECT_EQ(Snippet::fromJson(missing), std::nullopt) << member;
        QJsonObject mistyped = snippet.toJson();
        mistyped.insert(QLatin1String(member), 7);
        EXPECT_EQ(Snippet::fromJson(mistyped), std::nullopt) << member;
    }
    QJsonObject badId = snippet.toJson();
    badId.insert(u"id"_s, u"not-a-uuid"_s);
    EXPECT_EQ(Snippet::fromJson(badId), std::nullopt);
}

} // namespace
} // namespace tessary

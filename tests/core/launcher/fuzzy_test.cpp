#include "core/launcher/fuzzy.h"

#include <QRandomGenerator>

#include <gtest/gtest.h>

namespace tessary {
namespace {

struct ScoreCase {
    const char16_t *query;
    const char16_t *candidate;
    std::optional<double> expected;
};

class FuzzyScore : public ::testing::TestWithParam<ScoreCase> { };

TEST_P(FuzzyScore, givesTheTierScore)
{
    const ScoreCase &c = GetParam();
    const auto score = Fuzzy::score(QString::fromUtf16(c.query), QString::fromUtf16(c.candidate));
    if (c.expected)
        EXPECT_DOUBLE_EQ(score.value_or(-9999), *c.expected);
    else
        EXPECT_EQ(score, std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Tiers, FuzzyScore,
    ::testing::Values(
        // Exact, case-insensitive; the query is trimmed, the candidate is not.
        ScoreCase{u"SAFARI", u"safari", 1000}, ScoreCase{u"  safari\t", u"Safari", 1000},
        ScoreCase{u"safari", u"safari ", 899.5},
        // Prefix: 900 - 0.5 per extra character.
        ScoreCase{u"saf", u"Safari", 898.5},
        // Word start: 800 - 0.5 x the whole candidate's length.
        ScoreCase{u"saf", u"The Quick Brown Safari!", 788.5}, ScoreCase{u"store", u"App Store Pro", 793.5},
        ScoreCase{u"2", u"Blender 2", 795.5}, ScoreCase{u"beta", u"(beta) app", 795},
        // Initials: 700 - unused initials.
        ScoreCase{u"as", u"App Store", 700}, ScoreCase{u"gcc", u"Google Chrome Canary", 700},
        ScoreCase{u"vs", u"visual-studio_code", 699}, ScoreCase{u"a2", u"app 2go", 700},
        // Substring: 500 - position of the first occurrence.
        ScoreCase{u"fari", u"Safari", 498}, ScoreCase{u"ar", u"Safari", 497}, ScoreCase{u"p s", u"App Store", 498},
        // Scattered letters: 200 - 10 per gap - 0.2 x length.
        ScoreCase{u"sfr", u"Safari", 178.8}, ScoreCase{u"tmnl", u"Terminal", 168.4},
        // No match.
        ScoreCase{u"xyz", u"Safari", std::nullopt}, ScoreCase{u"zz", u"Safari", std::nullopt},
        ScoreCase{u"sf", u"Safari", std::nullopt}, ScoreCase{u"s", u"Mail", std::nullopt},
        ScoreCase{u"", u"Safari", std::nullopt}, ScoreCase{u"   ", u"Safari", std::nullopt},
        ScoreCase{u"safari", u"", std::nullopt}, ScoreCase{u"fsa", u"Safari", std::nullopt}));

INSTANTIATE_TEST_SUITE_P(UserPerceivedCharacters, FuzzyScore,
    ::testing::Values(
        // Decomposed é is one character and equals the composed one.
        ScoreCase{u"caf\u00e9", u"Cafe\u0301 Bar", 898}, ScoreCase{u"CAFE\u0301", u"caf\u00e9", 1000},
        // An accented letter is not its plain letter, even when the bytes start alike.
        ScoreCase{u"cafe", u"Cafe\u0301", std::nullopt}, ScoreCase{u"e", u"\u00e9t\u00e9", std::nullopt},
        // Emoji and flags count as one character each.
        ScoreCase{u"\U0001F600", u"\U0001F600 Smile", 897}, ScoreCase{u"mail", u"\U0001F1EB\U0001F1F7 Mail", 797},
        ScoreCase{u"\u00fcber", u"\u00dcBER", 1000},
        ScoreCase{u"\u0394\u03b5\u03bb", u"\u03b4\u03ad\u03bb\u03c4\u03b1", std::nullopt},
        ScoreCase{u"\u03b4\u03b5\u03bb", u"\u0394\u0395\u039b\u03a4\u0391", 899},
        // A non-Latin script splits words by letters too.
        ScoreCase{u"\u0444\u0430\u0439", u"\u041c\u043e\u0438 \u0424\u0430\u0439\u043b\u044b", 795.5},
        // CR LF is one character.
        ScoreCase{u"a\r\nb", u"A\r\nB", 1000}, ScoreCase{u"abc", u"xy\r\nzabc", 496},
        // Canonically equivalent characters are equal: Kelvin and ohm signs,
        // the Greek question mark, a Hangul syllable and its jamo.
        ScoreCase{u"k", u"\u212A", 1000}, ScoreCase{u"\u03c9", u"\u2126", 1000}, ScoreCase{u";", u"\u037E", 1000},
        ScoreCase{u"\uD55C", u"\u1112\u1161\u11AB", 1000}, ScoreCase{u"\u6587", u"\u6587\u5B57", 899.5},
        // Joined emoji sequences and variation selectors are single characters.
        ScoreCase{u"abc", u"ab\U0001F468\u200D\U0001F469\u200D\U0001F467cd", 189},
        ScoreCase{u"love", u"\u2764\uFE0F love", 797},
        // The capital dotted I lower-cases to two code points, one character.
        ScoreCase{u"i", u"\u0130stanbul", std::nullopt}));

TEST(Fuzzy, tiersKeepTheirOrderForOrdinaryNames)
{
    const QString name = QStringLiteral("Safari");
    const auto exact = Fuzzy::score(QStringLiteral("safari"), name);
    const auto prefix = Fuzzy::score(QStringLiteral("saf"), name);
    const auto wordStart = Fuzzy::score(QStringLiteral("saf"), QStringLiteral("The Quick Brown Safari!"));
    const auto substring = Fuzzy::score(QStringLiteral("fari"), name);
    ASSERT_TRUE(exact && prefix && wordStart && substring);
    EXPECT_GT(*exact, *prefix);
    EXPECT_GT(*prefix, *wordStart);
    EXPECT_GT(*wordStart, *substring);
}

TEST(Fuzzy, penaltiesAreNotClamped)
{
    const QString longName = QStringLiteral("x").repeated(3000) + QStringLiteral("abc");
    EXPECT_DOUBLE_EQ(*Fuzzy::score(QStringLiteral("abc"), longName), 500.0 - 3000.0);
    EXPECT_DOUBLE_EQ(*Fuzzy::score(QStringLiteral("a c"), QStringLiteral("a ") + longName), 200 - 10 - 0.2 * 3005);
}

// Precomposed names are scored per UTF-16 unit, decomposed ones per grapheme
// cluster; canonically equivalent text must score the same either way.
TEST(Fuzzy, composedAndDecomposedNamesScoreAlike)
{
    const QString alphabet = QStringLiteral("abcdeé ÉüÜñ-_.2ß");
    QRandomGenerator random(7);
    auto randomText = [&](int maxLength) {
        QString text;
        const int length = 1 + static_cast<int>(random.bounded(maxLength));
        for (int i = 0; i < length; ++i)
            text += alphabet.at(static_cast<qsizetype>(random.bounded(alphabet.size())));
        return text;
    };
    for (int round = 0; round < 3000; ++round) {
        const QString candidate = randomText(16);
        const qsizetype start = static_cast<qsizetype>(random.bounded(candidate.size()));
        const QString queries[] = {randomText(4), candidate.mid(start, 1 + random.bounded(4))};
        const QString decomposed = candidate.normalized(QString::NormalizationForm_D);
        for (const QString &query : queries) {
            EXPECT_EQ(Fuzzy::score(query, candidate), Fuzzy::score(query, decomposed))
                << query.toStdString() << " / " << candidate.toStdString();
        }
    }
}

} // namespace
} // namespace tessary

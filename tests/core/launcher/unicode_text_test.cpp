#include "core/launcher/unicode_text.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

TEST(UnicodeText, trimsHorizontalWhitespaceOnly)
{
    const std::pair<const char16_t *, const char16_t *> cases[] = {
        {u" \t\u00a0\u3000x y\u2009\u202f ", u"x y"},
        {u"\nx\r\n", u"\nx\r\n"},
        {u"\t\n\t", u"\n"},
        {u" \u200b ", u"\u200b"}, // zero-width space is a format character, not a space
        {u"   ", u""},
        {u"", u""},
    };
    for (const auto &[text, expected] : cases) {
        EXPECT_EQ(UnicodeText::trimmedHorizontal(QString::fromUtf16(text)), QString::fromUtf16(expected))
            << QString::fromUtf16(text).toStdString();
    }
}

TEST(UnicodeText, graphemesAreUserPerceivedCharacters)
{
    const std::pair<const char16_t *, std::size_t> cases[] = {
        {u"abc", 3},
        {u"e\u0301\u0301x", 2},
        {u"\r\n\n", 2},
        {u"\U0001F468\u200D\U0001F469\u200D\U0001F467!", 2},
        {u"\U0001F1EB\U0001F1F7\U0001F1E9", 2},
        {u"\u1112\u1161\u11AB\uD55C", 2},
        {u"\xD800x", 2},
        {u"", 0},
    };
    for (const auto &[text, count] : cases)
        EXPECT_EQ(UnicodeText::graphemes(QString::fromUtf16(text)).size(), count)
            << QString::fromUtf16(text).toStdString();
    const QString text = QStringLiteral("a\U0001F600b");
    const auto pieces = UnicodeText::graphemes(text);
    ASSERT_EQ(pieces.size(), 3u);
    EXPECT_EQ(pieces[1], QStringLiteral("\U0001F600"));
}

} // namespace
} // namespace tessary

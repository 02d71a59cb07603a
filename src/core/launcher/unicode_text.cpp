#include "core/launcher/unicode_text.h"

#include <QChar>

#include <unicode/ubrk.h>

#include <limits>
#include <memory>

namespace tessary::UnicodeText {

namespace {

struct BreakIteratorCloser {
    void operator()(UBreakIterator *iterator) const { ubrk_close(iterator); }
};

// Opening a break iterator loads rule data; keep one per thread.
UBreakIterator *characterBreaks()
{
    thread_local std::unique_ptr<UBreakIterator, BreakIteratorCloser> iterator = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<UBreakIterator, BreakIteratorCloser> opened(ubrk_open(UBRK_CHARACTER, "", nullptr, 0, &status));
        return U_SUCCESS(status) ? std::move(opened) : nullptr;
    }();
    return iterator.get();
}

char32_t codePointAt(QStringView text, qsizetype index)
{
    const QChar unit = text[index];
    if (unit.isHighSurrogate() && index + 1 < text.size() && text[index + 1].isLowSurrogate())
        return QChar::surrogateToUcs4(unit, text[index + 1]);
    return unit.unicode();
}

char32_t codePointBefore(QStringView text, qsizetype end)
{
    const QChar unit = text[end - 1];
    if (unit.isLowSurrogate() && end >= 2 && text[end - 2].isHighSurrogate())
        return QChar::surrogateToUcs4(text[end - 2], unit);
    return unit.unicode();
}

qsizetype unitsOf(char32_t codePoint) { return QChar::requiresSurrogates(codePoint) ? 2 : 1; }

} // namespace

char32_t firstCodePoint(QStringView text) { return codePointAt(text, 0); }

bool isHorizontalWhitespace(char32_t codePoint)
{
    return codePoint == U'\t' || QChar::category(codePoint) == QChar::Separator_Space;
}

QStringView trimmedHorizontal(QStringView text)
{
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && isHorizontalWhitespace(codePointAt(text, begin)))
        begin += unitsOf(codePointAt(text, begin));
    while (end > begin && isHorizontalWhitespace(codePointBefore(text, end)))
        end -= unitsOf(codePointBefore(text, end));
    return text.sliced(begin, end - begin);
}

std::vector<QStringView> graphemes(QStringView text)
{
    std::vector<QStringView> pieces;
    UBreakIterator *breaks = characterBreaks();
    UErrorCode status = U_ZERO_ERROR;
    if (breaks && text.size() <= std::numeric_limits<int32_t>::max())
        ubrk_setText(breaks, reinterpret_cast<const UChar *>(text.utf16()), static_cast<int32_t>(text.size()), &status);
    if (!breaks || U_FAILURE(status)) {
        // Without ICU's rules fall back to one piece per code point.
        for (qsizetype i = 0; i < text.size(); i += unitsOf(codePointAt(text, i)))
            pieces.push_back(text.sliced(i, unitsOf(codePointAt(text, i))));
        return pieces;
    }
    int32_t start = ubrk_first(breaks);
    for (int32_t end = ubrk_next(breaks); end != UBRK_DONE; start = end, end = ubrk_next(breaks))
        pieces.push_back(text.sliced(start, end - start));
    // Do not keep a pointer to the caller's text.
    ubrk_setText(breaks, nullptr, 0, &status);
    return pieces;
}

} // namespace tessary::UnicodeText

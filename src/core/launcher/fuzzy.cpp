#include "core/launcher/fuzzy.h"

#include "core/launcher/unicode_text.h"

#include <QVarLengthArray>

#include <vector>

namespace tessary::Fuzzy {

namespace {

// Below U+0300 every code unit is a character of its own (only CR LF joins),
// is already in canonical form and lower-cases to one code unit (but U+0130).
constexpr char16_t firstCombiningUnit = 0x300;
constexpr char16_t capitalDottedI = 0x130;

// Text in which each UTF-16 unit is one character: the common case, scored
// without allocating or segmenting.
class UnitText {
public:
    // False when `text` needs the general path.
    bool assignLowered(QStringView text)
    {
        m_units.resize(text.size());
        for (qsizetype i = 0; i < text.size(); ++i) {
            const char16_t unit = text[i].unicode();
            if (unit >= firstCombiningUnit || unit == capitalDottedI)
                return false;
            if (unit == u'\n' && i > 0 && text[i - 1] == u'\r')
                return false;
            m_units[i] = QChar::toLower(unit);
        }
        return true;
    }

    qsizetype size() const { return m_units.size(); }
    char16_t at(qsizetype i) const { return m_units[i]; }
    bool isWordCharacter(qsizetype i) const { return QChar::isLetterOrNumber(m_units[i]); }

private:
    QVarLengthArray<char16_t, 128> m_units;
};

// Lower-cased, canonically composed text split into grapheme clusters.
class GraphemeText {
public:
    explicit GraphemeText(QStringView text)
        : m_text(text.toString().toLower().normalized(QString::NormalizationForm_C))
        , m_characters(UnicodeText::graphemes(m_text))
    {
    }

    qsizetype size() const { return static_cast<qsizetype>(m_characters.size()); }
    QStringView at(qsizetype i) const { return m_characters[static_cast<size_t>(i)]; }
    bool isWordCharacter(qsizetype i) const
    {
        const QStringView character = at(i);
        const char32_t first = character.size() > 1 && character[0].isHighSurrogate()
            ? QChar::surrogateToUcs4(character[0], character[1])
            : character[0].unicode();
        return QChar::isLetterOrNumber(first);
    }

private:
    QString m_text;
    std::vector<QStringView> m_characters;
};

template <typename Text> bool matchesAt(const Text &t, qsizetype start, const Text &q)
{
    if (start + q.size() > t.size())
        return false;
    for (qsizetype i = 0; i < q.size(); ++i) {
        if (t.at(start + i) != q.at(i))
            return false;
    }
    return true;
}

template <typename Text> std::optional<double> rank(const Text &q, const Text &t)
{
    const qsizetype m = q.size();
    const qsizetype n = t.size();
    if (m == 0 || n == 0)
        return std::nullopt;
    if (matchesAt(t, 0, q))
        return m == n ? 1000.0 : 900.0 - 0.5 * static_cast<double>(n - m);

    qsizetype words = 0;
    bool initialsMatch = true;
    for (qsizetype i = 0; i < n; ++i) {
        if (!t.isWordCharacter(i) || (i > 0 && t.isWordCharacter(i - 1)))
            continue;
        qsizetype end = i + 1;
        while (end < n && t.isWordCharacter(end))
            ++end;
        if (end - i >= m && matchesAt(t, i, q))
            return 800.0 - 0.5 * static_cast<double>(n);
        if (words < m)
            initialsMatch = initialsMatch && t.at(i) == q.at(words);
        ++words;
    }
    if (m >= 2 && words >= m && initialsMatch)
        return 700.0 - static_cast<double>(words - m);

    for (qsizetype start = 1; start + m <= n; ++start) {
        if (matchesAt(t, start, q))
            return 500.0 - static_cast<double>(start);
    }

    if (m < 3)
        return std::nullopt;
    qsizetype gaps = 0;
    qsizetype next = 0;
    for (qsizetype i = 0; i < m; ++i) {
        qsizetype found = next;
        while (found < n && t.at(found) != q.at(i))
            ++found;
        if (found == n)
            return std::nullopt;
        if (i > 0 && found != next)
            ++gaps;
        next = found + 1;
    }
    return 200.0 - 10.0 * static_cast<double>(gaps) - 0.2 * static_cast<double>(n);
}

} // namespace

std::optional<double> score(const QString &query, const QString &candidate)
{
    const QStringView trimmedQuery = UnicodeText::trimmedHorizontal(query);
    UnitText q;
    UnitText t;
    if (q.assignLowered(trimmedQuery) && t.assignLowered(candidate))
        return rank(q, t);
    return rank(GraphemeText(trimmedQuery), GraphemeText(candidate));
}

} // namespace tessary::Fuzzy

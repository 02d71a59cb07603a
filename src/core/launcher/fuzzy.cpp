#include "core/launcher/fuzzy.h"

#include "core/launcher/unicode_text.h"

#include <QVarLengthArray>

#include <unicode/uchar.h>
#include <unicode/unorm2.h>

#include <array>
#include <cstdint>
#include <vector>

namespace tessary::Fuzzy {

namespace {

enum UnitTrait : std::uint8_t { standsAlone = 1, wordCharacter = 2 };

// Per UTF-16 unit: whether it is a character of its own that lower-cases to
// one unit (both in canonical composed form, so equal units mean equal
// characters), and whether its lower case is a letter or number. Units that
// join others (marks, joiners, jamo, prepend, surrogates) or that composition
// would change take the general path.
const std::array<std::uint8_t, 0x10000> &unitTraits()
{
    static const auto traits = [] {
        std::array<std::uint8_t, 0x10000> table{};
        for (char32_t unit = 0; unit < 0x10000; ++unit) {
            const char32_t lower = QChar::toLower(unit);
            const auto cluster = u_getIntPropertyValue(static_cast<UChar32>(unit), UCHAR_GRAPHEME_CLUSTER_BREAK);
            const bool alone = !QChar::isSurrogate(unit)
                && (cluster == U_GCB_OTHER || cluster == U_GCB_CONTROL || cluster == U_GCB_CR || cluster == U_GCB_LF
                    || cluster == U_GCB_LV || cluster == U_GCB_LVT);
            const bool composed = u_getIntPropertyValue(static_cast<UChar32>(unit), UCHAR_NFC_QUICK_CHECK) == UNORM_YES
                && lower < 0x10000
                && u_getIntPropertyValue(static_cast<UChar32>(lower), UCHAR_NFC_QUICK_CHECK) == UNORM_YES;
            // The one unconditional lower case longer than its letter: U+0130 gives i + U+0307.
            const bool oneToOne = unit != 0x130;
            std::uint8_t trait = alone && composed && oneToOne ? standsAlone : 0;
            if (QChar::isLetterOrNumber(lower))
                trait |= wordCharacter;
            table[unit] = trait;
        }
        return table;
    }();
    return traits;
}

char16_t loweredUnit(char16_t unit)
{
    if (unit < 0x80)
        return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
    return static_cast<char16_t>(QChar::toLower(unit));
}

// Text in which each UTF-16 unit is one character: nearly every name, scored
// without allocating or segmenting.
class UnitText {
public:
    // False when `text` needs the general path.
    bool assignLowered(QStringView text)
    {
        const auto &traits = unitTraits();
        m_units.resize(text.size());
        m_words.resize(text.size());
        for (qsizetype i = 0; i < text.size(); ++i) {
            const char16_t unit = text[i].unicode();
            const std::uint8_t trait = traits[unit];
            if (!(trait & standsAlone) || (unit == u'\n' && i > 0 && text[i - 1] == u'\r'))
                return false;
            m_units[i] = loweredUnit(unit);
            m_words[i] = trait & wordCharacter;
        }
        return true;
    }

    qsizetype size() const { return m_units.size(); }
    char16_t at(qsizetype i) const { return m_units[i]; }
    bool isWordCharacter(qsizetype i) const { return m_words[i]; }

private:
    QVarLengthArray<char16_t, 128> m_units;
    QVarLengthArray<bool, 128> m_words;
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
    bool isWordCharacter(qsizetype i) const { return QChar::isLetterOrNumber(UnicodeText::firstCodePoint(at(i))); }

private:
    QString m_text;
    std::vector<QStringView> m_characters;
};

// True when some character of `q` cannot be found in order in `candidate`,
// decided on the raw units before any copy is made; false when it may match
// or the candidate needs the general path.
bool certainlyMissing(const UnitText &q, QStringView candidate)
{
    const auto &traits = unitTraits();
    qsizetype found = 0;
    for (const QChar unit : candidate) {
        if (!(traits[unit.unicode()] & standsAlone))
            return false;
        if (loweredUnit(unit.unicode()) == q.at(found) && ++found == q.size())
            return false;
    }
    return true;
}

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

    // Every tier needs the query's characters in the candidate in order, so
    // the scattered-letters walk doubles as a quick rejection.
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
        i = end;
    }
    if (m >= 2 && words >= m && initialsMatch)
        return 700.0 - static_cast<double>(words - m);

    for (qsizetype start = 1; start + m <= n; ++start) {
        if (matchesAt(t, start, q))
            return 500.0 - static_cast<double>(start);
    }

    if (m < 3)
        return std::nullopt;
    return 200.0 - 10.0 * static_cast<double>(gaps) - 0.2 * static_cast<double>(n);
}

} // namespace

std::optional<double> score(const QString &query, const QString &candidate)
{
    const QStringView trimmedQuery = UnicodeText::trimmedHorizontal(query);
    UnitText q;
    if (q.assignLowered(trimmedQuery)) {
        // Most candidates miss a letter of the query altogether.
        if (q.size() == 0 || certainlyMissing(q, candidate))
            return std::nullopt;
        UnitText t;
        if (t.assignLowered(candidate))
            return rank(q, t);
    }
    return rank(GraphemeText(trimmedQuery), GraphemeText(candidate));
}

} // namespace tessary::Fuzzy

#include "core/launcher/calculator.h"

#include "core/launcher/unicode_text.h"

#include <QLocale>
#include <QRegularExpression>

#include <unicode/numberformatter.h>
#include <unicode/uchar.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numbers>
#include <vector>

namespace tessary::Calculator {

namespace {

constexpr qsizetype maximumLength = 199;

bool isNumeric(QStringView character)
{
    return u_getIntPropertyValue(static_cast<UChar32>(UnicodeText::firstCodePoint(character)), UCHAR_NUMERIC_TYPE)
        != U_NT_NONE;
}

bool isLetter(QStringView character) { return QChar::isLetter(UnicodeText::firstCodePoint(character)); }

// Recursive descent over user-perceived characters; every rule moves forward
// and nothing is pushed back. Depth is bounded by the input length.
class Parser {
public:
    explicit Parser(QStringView text)
        : m_characters(UnicodeText::graphemes(text))
    {
    }

    std::optional<double> parse()
    {
        const auto value = expr();
        skipSpaces();
        if (!value || !atEnd() || !std::isfinite(*value))
            return std::nullopt;
        return value;
    }

private:
    bool atEnd() const { return m_position >= m_characters.size(); }
    QStringView current() const { return m_characters[m_position]; }

    void skipSpaces()
    {
        while (!atEnd() && current() == u" ")
            ++m_position;
    }

    bool eat(char16_t character)
    {
        skipSpaces();
        if (atEnd() || current() != QStringView(&character, 1))
            return false;
        ++m_position;
        return true;
    }

    std::optional<double> expr()
    {
        auto value = term();
        while (value) {
            if (eat(u'+')) {
                const auto right = term();
                value = right ? std::optional(*value + *right) : std::nullopt;
            } else if (eat(u'-')) {
                const auto right = term();
                value = right ? std::optional(*value - *right) : std::nullopt;
            } else {
                break;
            }
        }
        return value;
    }

    std::optional<double> term()
    {
        auto value = unary();
        while (value) {
            if (eat(u'*') || eat(u'×')) {
                const auto right = unary();
                value = right ? std::optional(*value * *right) : std::nullopt;
            } else if (eat(u'/') || eat(u'÷')) {
                const auto right = unary();
                value = right && *right != 0.0 ? std::optional(*value / *right) : std::nullopt;
            } else {
                break;
            }
        }
        return value;
    }

    std::optional<double> unary()
    {
        if (eat(u'-')) {
            const auto value = unary();
            return value ? std::optional(-*value) : std::nullopt;
        }
        if (eat(u'+'))
            return unary();
        auto value = primary();
        if (!value)
            return std::nullopt;
        while (eat(u'%'))
            *value /= 100.0;
        if (eat(u'^')) {
            const auto exponent = unary();
            return exponent ? std::optional(std::pow(*value, *exponent)) : std::nullopt;
        }
        return value;
    }

    std::optional<double> primary()
    {
        if (eat(u'(')) {
            const auto value = expr();
            return value && eat(u')') ? value : std::nullopt;
        }
        if (atEnd())
            return std::nullopt;
        if (isNumeric(current()) || current() == u".")
            return number();
        if (isLetter(current()))
            return named();
        return std::nullopt;
    }

    std::optional<double> number()
    {
        QString run;
        while (!atEnd() && (isNumeric(current()) || current() == u"."))
            run += m_characters[m_position++];
        // Digits of other scripts become bytes that the conversion rejects.
        const QByteArray latin = run.toLatin1();
        double value = 0;
        const char *end = latin.constData() + latin.size();
        const auto [stop, error] = std::from_chars(latin.constData(), end, value, std::chars_format::fixed);
        if (error != std::errc() || stop != end)
            return std::nullopt;
        return value;
    }

    std::optional<double> named()
    {
        QString name;
        while (!atEnd() && (isLetter(current()) || isNumeric(current())))
            name += m_characters[m_position++];
        name = name.toLower();
        if (name == u"pi" || name == u"π")
            return std::numbers::pi;
        if (name == u"e")
            return std::numbers::e;
        if (name == u"tau")
            return 2.0 * std::numbers::pi;
        if (!eat(u'('))
            return std::nullopt;
        const auto argument = expr();
        if (!argument || !eat(u')'))
            return std::nullopt;
        return apply(name, *argument);
    }

    static std::optional<double> apply(const QString &name, double x)
    {
        auto within = [](bool inDomain, double value) { return inDomain ? std::optional(value) : std::nullopt; };
        if (name == u"sqrt")
            return within(x >= 0, std::sqrt(x));
        if (name == u"sin")
            return std::sin(x);
        if (name == u"cos")
            return std::cos(x);
        if (name == u"tan")
            return std::tan(x);
        if (name == u"asin")
            return within(x >= -1 && x <= 1, std::asin(x));
        if (name == u"acos")
            return within(x >= -1 && x <= 1, std::acos(x));
        if (name == u"atan")
            return std::atan(x);
        if (name == u"ln")
            return within(x > 0, std::log(x));
        if (name == u"log")
            return within(x > 0, std::log10(x));
        if (name == u"log2")
            return within(x > 0, std::log2(x));
        if (name == u"exp")
            return std::exp(x);
        if (name == u"abs")
            return std::abs(x);
        if (name == u"round")
            return std::round(x);
        if (name == u"floor")
            return std::floor(x);
        if (name == u"ceil")
            return std::ceil(x);
        return std::nullopt;
    }

    std::vector<QStringView> m_characters;
    size_t m_position = 0;
};

bool isOperator(QChar character)
{
    static constexpr std::u16string_view operators = u"+*/^×÷()%";
    return operators.find(character.unicode()) != std::u16string_view::npos;
}

QString icuFormat(double value, bool grouping)
{
    using namespace icu::number;
    static const LocalizedNumberFormatter grouped
        = NumberFormatter::withLocale(icu::Locale("en_US")).precision(Precision::maxFraction(10));
    static const LocalizedNumberFormatter plain = grouped.grouping(UNUM_GROUPING_OFF);
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString text = (grouping ? grouped : plain).formatDouble(value, status).toString(status);
    if (U_FAILURE(status))
        return {};
    return QString(reinterpret_cast<const QChar *>(text.getBuffer()), text.length());
}

} // namespace

std::optional<double> forLauncher(const QString &text)
{
    const QStringView trimmed = UnicodeText::trimmedHorizontal(text);
    if (trimmed.isEmpty())
        return std::nullopt;
    if (std::any_of(trimmed.begin(), trimmed.end(), isOperator))
        return evaluate(trimmed.toString());
    const auto characters = UnicodeText::graphemes(trimmed);
    const bool innerMinus = std::any_of(
        characters.begin() + 1, characters.end(), [](QStringView character) { return character.contains(u'-'); });
    return innerMinus ? evaluate(trimmed.toString()) : std::nullopt;
}

std::optional<double> evaluate(const QString &text)
{
    static const QRegularExpression groupingComma(
        QStringLiteral("(?<=\\d),(?=\\d{3})"), QRegularExpression::UseUnicodePropertiesOption);
    const QString withoutGrouping = QString(text).remove(groupingComma);
    const QStringView trimmed = UnicodeText::trimmedHorizontal(withoutGrouping);
    // Cheap bound first: fewer UTF-16 units than the limit means fewer characters.
    if (trimmed.isEmpty()
        || (trimmed.size() > maximumLength
            && static_cast<qsizetype>(UnicodeText::graphemes(trimmed).size()) > maximumLength))
        return std::nullopt;
    return Parser(trimmed).parse();
}

QString format(double value, bool grouping)
{
    if (value != 0 && (std::abs(value) >= 1e15 || std::abs(value) < 1e-9)) {
        // "%.6g" in the C locale; printf would follow the process locale's decimal point.
        char buffer[32];
        const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 6).ptr;
        return QString::fromLatin1(buffer, end - buffer);
    }
    QString text = icuFormat(value, grouping);
    return text.isEmpty() ? QString::number(value, 'g', QLocale::FloatingPointShortest) : text;
}

} // namespace tessary::Calculator

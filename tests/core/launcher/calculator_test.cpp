#include "core/launcher/calculator.h"

#include <QRandomGenerator>
#include <QStringList>

#include <gtest/gtest.h>

#include <cmath>

namespace tessary {
namespace {

struct ValueCase {
    const char16_t *text;
    std::optional<double> expected;
};

void PrintTo(const ValueCase &c, std::ostream *out) { *out << QString::fromUtf16(c.text).toStdString(); }

void expectValue(const std::optional<double> &actual, const std::optional<double> &expected)
{
    if (expected)
        EXPECT_NEAR(actual.value_or(NAN), *expected, 1e-6);
    else
        EXPECT_EQ(actual, std::nullopt);
}

class CalculatorEvaluate : public ::testing::TestWithParam<ValueCase> { };

TEST_P(CalculatorEvaluate, followsTheGrammar)
{
    expectValue(Calculator::evaluate(QString::fromUtf16(GetParam().text)), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Values, CalculatorEvaluate,
    ::testing::Values(ValueCase{u"2+2", 4}, ValueCase{u"2+3*4", 14}, ValueCase{u"(2+3)*4", 20}, ValueCase{u"10-4-3", 3},
        ValueCase{u"64/4/2", 8}, ValueCase{u"10/4", 2.5}, ValueCase{u"2^10", 1024}, ValueCase{u"-2^2", -4},
        ValueCase{u"2^3^2", 512}, ValueCase{u"2^-1", 0.5}, ValueCase{u"(-2)^2", 4}, ValueCase{u"--2", 2},
        ValueCase{u"+-+2", -2}, ValueCase{u"2*-3", -6}, ValueCase{u"200*15%", 30}, ValueCase{u"12*7%", 0.84},
        ValueCase{u"50%", 0.5}, ValueCase{u"50%%", 0.005}, ValueCase{u"50 %", 0.5}, ValueCase{u"10%^2", 0.01},
        ValueCase{u"sqrt(16)+1", 5}, ValueCase{u"1,000+1", 1001}, ValueCase{u"1,000,000/1,000", 1000},
        ValueCase{u"5 \u00f7 2", 2.5}, ValueCase{u"3 \u00d7 4", 12}, ValueCase{u"pi*2", 6.283185307179586},
        ValueCase{u"\u03c0", M_PI}, ValueCase{u"PI", M_PI}, ValueCase{u"tau/2", M_PI}, ValueCase{u"abs(-3)", 3},
        ValueCase{u"ln(e)", 1}, ValueCase{u"log(1000)", 3}, ValueCase{u"log2(8)", 3}, ValueCase{u"Sqrt(9)", 3},
        ValueCase{u"round(2.6)", 3}, ValueCase{u"round(2.5)", 3}, ValueCase{u"round(-2.5)", -3},
        ValueCase{u"floor(-1.5)", -2}, ValueCase{u"ceil(1.2)", 2}, ValueCase{u"exp(0)", 1},
        ValueCase{u"sin(0)+cos(0)", 1}, ValueCase{u"tan(0)", 0}, ValueCase{u"asin(1)", M_PI / 2},
        ValueCase{u"acos(1)", 0}, ValueCase{u"atan(1)*4", M_PI}, ValueCase{u" 7 - 2 ", 5}, ValueCase{u".5+5.", 5.5},
        ValueCase{u"1/(9^999)", 0}, ValueCase{u"( 2 )", 2}));

INSTANTIATE_TEST_SUITE_P(Failures, CalculatorEvaluate,
    ::testing::Values(ValueCase{u"1/0", {}}, ValueCase{u"1/-0", {}}, ValueCase{u"2+", {}}, ValueCase{u"abc", {}},
        ValueCase{u"2*(3", {}}, ValueCase{u"((((((", {}}, ValueCase{u"sqrt(-1)", {}}, ValueCase{u"", {}},
        ValueCase{u"   ", {}}, ValueCase{u"2 2", {}}, ValueCase{u"foo(2)", {}}, ValueCase{u"9999999999^9999999999", {}},
        ValueCase{u"(1/0.0000001)^999-(1/0.0000001)^999", {}}, ValueCase{u"asin(2)", {}}, ValueCase{u"ln(0)", {}},
        ValueCase{u"log(-1)", {}}, ValueCase{u"log2(0)", {}},
        // No implicit multiplication, no exponent notation.
        ValueCase{u"2(3)", {}}, ValueCase{u"2pi", {}}, ValueCase{u"2\u03c0", {}}, ValueCase{u"1e5", {}},
        ValueCase{u"(2)(3)", {}},
        // Constants take no parentheses; functions need them.
        ValueCase{u"pi(2)", {}}, ValueCase{u"sqrt 4", {}}, ValueCase{u"sqrt", {}},
        // Numbers: one point at most, digits of the ASCII kind only.
        ValueCase{u"1.2.3", {}}, ValueCase{u".", {}}, ValueCase{u"\u0663+1", {}}, ValueCase{u"2\u00b2", {}},
        // A comma not followed by three digits stays and fails.
        ValueCase{u"1,00+1", {}}, ValueCase{u"1,2", {}},
        // Only U+0020 is skipped inside the expression.
        ValueCase{u"2\t+2", {}}, ValueCase{u"2\u00a0+2", {}}, ValueCase{u")", {}}, ValueCase{u"2)", {}},
        ValueCase{u"*2", {}}, ValueCase{u"%", {}}, ValueCase{u"2^", {}}, ValueCase{u"-", {}}));

TEST(Calculator, lengthBoundIsCountedInCharacters)
{
    const QString ones = QStringLiteral("1+").repeated(99); // 198 characters
    expectValue(Calculator::evaluate(ones + QStringLiteral("1")), 100);
    expectValue(Calculator::evaluate(ones + QStringLiteral("10")), std::nullopt);
    expectValue(
        Calculator::evaluate(QStringLiteral("(").repeated(99) + QStringLiteral("2") + QStringLiteral(")").repeated(99)),
        2);
    expectValue(Calculator::evaluate(QStringLiteral("-").repeated(198) + QStringLiteral("2")), 2);
    // Grouping commas are removed before the bound applies.
    expectValue(Calculator::evaluate(QStringLiteral("1,000+").repeated(33) + QStringLiteral("1,000")), 34000);
}

TEST(Calculator, launcherGateAcceptsOnlyCalculations)
{
    const ValueCase cases[] = {{u"42", {}}, {u"3.14", {}}, {u"safari", {}}, {u"-5", {}}, {u"pi", {}}, {u"  ", {}},
        {u"12*7", 84}, {u"10-4", 6}, {u" 10 - 4 ", 6}, {u"12*7%", 0.84}, {u"1/0", {}}, {u"well-known", {}}, {u"(5)", 5},
        {u"e-1", M_E - 1}, {u"2 2", {}}, {u"1,000", {}}};
    for (const ValueCase &c : cases) {
        SCOPED_TRACE(QString::fromUtf16(c.text).toStdString());
        expectValue(Calculator::forLauncher(QString::fromUtf16(c.text)), c.expected);
    }
}

TEST(Calculator, formatUsesEnUsDecimalsOrExponentForm)
{
    struct FormatCase {
        double value;
        bool grouping;
        const char *expected;
    };
    const FormatCase cases[] = {{1234567.891, true, "1,234,567.891"}, {0.1 + 0.2, true, "0.3"}, {84, false, "84"},
        {1e20, true, "1e+20"}, {1234567, false, "1234567"}, {1000000, true, "1,000,000"}, {-1234.5, true, "-1,234.5"},
        {0, true, "0"}, {1.0 / 3.0, true, "0.3333333333"}, {2.0 / 3.0, false, "0.6666666667"},
        {999999999999999.0, true, "999,999,999,999,999"}, {1e15, true, "1e+15"}, {-2.5e-10, true, "-2.5e-10"},
        {1e-9, true, "0.000000001"}, {0.00000000049, true, "4.9e-10"}, {123456789012345.6, false, "123456789012345.6"},
        {0.125, true, "0.125"}, {M_PI, true, "3.1415926536"}, {std::pow(2.0, 64), true, "1.84467e+19"},
        {-1.5e-12, false, "-1.5e-12"}};
    for (const FormatCase &c : cases)
        EXPECT_EQ(Calculator::format(c.value, c.grouping).toStdString(), c.expected) << c.value;
}

TEST(Calculator, launcherResultsReadAsTyped)
{
    const std::tuple<const char *, const char *, const char *> cases[]
        = {{"12*7%", "0.84", "0.84"}, {"1000*1000", "1,000,000", "1000000"}, {"0.1+0.2", "0.3", "0.3"},
            {"10/3", "3.3333333333", "3.3333333333"}, {"2^64", "1.84467e+19", "1.84467e+19"}, {"1/3*3", "1", "1"}};
    for (const auto &[text, shown, copied] : cases) {
        const auto value = Calculator::forLauncher(QString::fromLatin1(text));
        ASSERT_TRUE(value) << text;
        EXPECT_EQ(Calculator::format(*value, true).toStdString(), shown);
        EXPECT_EQ(Calculator::format(*value, false).toStdString(), copied);
    }
}

// No input may crash, hang or trip the sanitizers.
TEST(Calculator, survivesHostileInput)
{
    const QString alphabet = QStringLiteral("0123456789.,+-*/^%()× ÷πe pisqrtlog\t\u0301\U0001F600a");
    QRandomGenerator random(20270115);
    for (int round = 0; round < 20000; ++round) {
        QString text;
        const int length = static_cast<int>(random.bounded(260));
        for (int i = 0; i < length; ++i)
            text += alphabet.at(static_cast<qsizetype>(random.bounded(alphabet.size())));
        const auto value = Calculator::evaluate(text);
        if (value) {
            EXPECT_TRUE(std::isfinite(*value)) << text.toStdString();
        }
        (void)Calculator::forLauncher(text);
    }
    QStringList hostile;
    hostile << QStringLiteral("(").repeated(100000) << QStringLiteral("-").repeated(100000)
            << QStringLiteral("2^").repeated(5000) + QStringLiteral("2") << QStringLiteral("\u0301").repeated(100000)
            << QStringLiteral("(\u0301").repeated(150) << QChar(0xD800) + QStringLiteral("+1");
    for (const QString &text : hostile)
        EXPECT_EQ(Calculator::evaluate(text), std::nullopt);
}

} // namespace
} // namespace tessary

#include "app/selftest/checks/calculator_check.h"

#include "app/selftest/checks/behaviour_result.h"
#include "core/launcher/calculator.h"

namespace tessary {

CalculatorCheck::CalculatorCheck()
    : SelfCheck(QStringLiteral("Calculator"))
{
}

void CalculatorCheck::run(Done done)
{
    struct Case {
        const char16_t *input;
        std::optional<QString> display;
    };
    static const Case cases[] = {{u"2+3*4", QStringLiteral("14")}, {u"2^3^2", QStringLiteral("512")},
        {u"(1+2)\u00D73", QStringLiteral("9")}, {u"10/4", QStringLiteral("2.5")}, {u"sqrt(16)+1", QStringLiteral("5")},
        {u"12*7%", QStringLiteral("0.84")}, {u"1234567*1000", QStringLiteral("1,234,567,000")}, {u"1/0", std::nullopt},
        {u"2*(3", std::nullopt}, {u"42", std::nullopt}};
    QStringList mismatches;
    for (const Case &c : cases) {
        const QString input = QString::fromUtf16(c.input);
        const std::optional<double> value = Calculator::forLauncher(input);
        const std::optional<QString> display = value ? std::optional(Calculator::format(*value, true)) : std::nullopt;
        if (display != c.display) {
            mismatches.append(QStringLiteral("%1 gave %2 instead of %3")
                                  .arg(input, display.value_or(QStringLiteral("nothing")),
                                      c.display.value_or(QStringLiteral("nothing"))));
        }
    }
    done(behaviourResult(mismatches, QStringLiteral("%1 known calculations answered right.").arg(std::size(cases))));
}

} // namespace tessary

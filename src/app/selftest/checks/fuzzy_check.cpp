#include "app/selftest/checks/fuzzy_check.h"

#include "app/selftest/checks/behaviour_result.h"
#include "core/launcher/fuzzy.h"

namespace tessary {

FuzzyCheck::FuzzyCheck()
    : SelfCheck(QStringLiteral("Fuzzy matcher"))
{
}

void FuzzyCheck::run(Done done)
{
    struct Case {
        const char *query;
        const char *candidate;
        std::optional<double> score;
    };
    // One per tier: exact, prefix, word start, initials, substring, scattered, none.
    static const Case cases[] = {{"SAFARI", "safari", 1000}, {"saf", "Safari", 898.5},
        {"store", "App Store Pro", 793.5}, {"gcc", "Google Chrome Canary", 700}, {"fari", "Safari", 498},
        {"tmnl", "Terminal", 168.4}, {"xyz", "Safari", std::nullopt}};
    QStringList mismatches;
    for (const Case &c : cases) {
        const std::optional<double> score
            = Fuzzy::score(QString::fromLatin1(c.query), QString::fromLatin1(c.candidate));
        const bool same = score && c.score ? qFuzzyCompare(*score, *c.score) : score == c.score;
        if (!same) {
            mismatches.append(QStringLiteral("\"%1\" in \"%2\" scored %3 instead of %4")
                                  .arg(QLatin1String(c.query), QLatin1String(c.candidate),
                                      score ? QString::number(*score) : QStringLiteral("no match"),
                                      c.score ? QString::number(*c.score) : QStringLiteral("no match")));
        }
    }
    done(behaviourResult(mismatches, QStringLiteral("%1 known matches scored right.").arg(std::size(cases))));
}

} // namespace tessary

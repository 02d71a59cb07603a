#pragma once

#include "app/selftest/check_result.h"

#include <QStringList>

namespace tessary {

// The result of comparing built-in behaviour with known answers: `mismatches`
// describe each wrong answer; `passed` is the finding when there are none.
inline CheckResult behaviourResult(const QStringList &mismatches, const QString &passed)
{
    if (mismatches.isEmpty())
        return CheckResult::passed(passed);
    return CheckResult::failure(mismatches.join(QStringLiteral("; ")) + QLatin1Char('.'),
        QStringLiteral("This build of Tessary is broken: report it with the output of tessary --selftest --json."));
}

} // namespace tessary

#include "app/selftest/checks/snippet_check.h"

#include "app/selftest/checks/behaviour_result.h"
#include "core/settings/snippet.h"

namespace tessary {

SnippetCheck::SnippetCheck()
    : SelfCheck(QStringLiteral("Snippet placeholders"))
{
}

void SnippetCheck::run(Done done)
{
    const QDateTime moment(QDate(2027, 1, 15), QTime(16, 5));
    const QLocale locale(QLocale::English, QLocale::UnitedStates);
    struct Case {
        const char *text;
        const char *expected;
    };
    // The clipboard text is inserted last and never expanded itself.
    static const Case cases[] = {{"{date}", "Jan 15, 2027"}, {"{time}", "4:05 PM"},
        {"{datetime}", "Jan 15, 2027, 4:05 PM"}, {"<{clipboard}>", "<{date}>"}, {"{Date} {x}", "{Date} {x}"}};
    QStringList mismatches;
    for (const Case &c : cases) {
        const Snippet snippet{QUuid(), QStringLiteral("check"), QString(), QString::fromLatin1(c.text)};
        QString expanded = snippet.expanded(QStringLiteral("{date}"), moment, locale);
        // ICU separates the time from AM/PM with a narrow no-break space.
        expanded.replace(QChar(0x202F), QLatin1Char(' '));
        if (expanded != QLatin1String(c.expected)) {
            mismatches.append(QStringLiteral("%1 gave \"%2\" instead of \"%3\"")
                                  .arg(QLatin1String(c.text), expanded, QLatin1String(c.expected)));
        }
    }
    done(behaviourResult(mismatches, QStringLiteral("%1 placeholder expansions right.").arg(std::size(cases))));
}

} // namespace tessary

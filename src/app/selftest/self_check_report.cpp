#include "app/selftest/self_check_report.h"

#include "app/command_line.h"
#include "app/selftest/self_check_runner.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace tessary::SelfCheckReport {

QByteArray json(const SelfCheckRunner &runner)
{
    QJsonArray checks;
    for (qsizetype i = 0; i < runner.size(); ++i) {
        const std::optional<CheckResult> &result = runner.result(i);
        if (!result)
            continue;
        QJsonObject check{{QLatin1String("name"), runner.name(i)},
            {QLatin1String("status"), statusName(result->status)}, {QLatin1String("finding"), result->finding}};
        if (!result->remedy.isEmpty())
            check.insert(QLatin1String("remedy"), result->remedy);
        checks.append(check);
    }
    const QJsonObject report{
        {QLatin1String("version"), CommandLine::version().trimmed()}, {QLatin1String("checks"), checks}};
    return QJsonDocument(report).toJson(QJsonDocument::Indented);
}

QByteArray text(const SelfCheckRunner &runner)
{
    QString out;
    for (qsizetype i = 0; i < runner.size(); ++i) {
        const std::optional<CheckResult> &result = runner.result(i);
        if (!result)
            continue;
        out += statusName(result->status).leftJustified(8) + runner.name(i) + QStringLiteral(": ") + result->finding
            + QLatin1Char('\n');
        if (!result->remedy.isEmpty())
            out += QStringLiteral("        → ") + result->remedy + QLatin1Char('\n');
    }
    return out.toUtf8();
}

} // namespace tessary::SelfCheckReport

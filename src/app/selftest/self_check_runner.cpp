#include "app/selftest/self_check_runner.h"

#include <QPointer>
#include <QTimer>

#include <algorithm>

namespace tessary {

QString statusName(CheckResult::Status status)
{
    switch (status) {
    case CheckResult::Status::pass:
        return QStringLiteral("pass");
    case CheckResult::Status::warning:
        return QStringLiteral("warning");
    case CheckResult::Status::failure:
        break;
    }
    return QStringLiteral("failure");
}

SelfCheckRunner::SelfCheckRunner(std::vector<std::unique_ptr<SelfCheck>> checks, QObject *parent)
    : QObject(parent)
    , m_checks(std::move(checks))
    , m_results(qsizetype(m_checks.size()))
{
}

void SelfCheckRunner::start() { QTimer::singleShot(0, this, &SelfCheckRunner::runNext); }

bool SelfCheckRunner::anyFailed() const
{
    return std::any_of(m_results.cbegin(), m_results.cend(), [](const std::optional<CheckResult> &result) {
        return result && result->status == CheckResult::Status::failure;
    });
}

void SelfCheckRunner::runNext()
{
    if (m_next >= size()) {
        Q_EMIT finished();
        return;
    }
    const qsizetype index = m_next++;
    m_checks.at(size_t(index))->run([self = QPointer<SelfCheckRunner>(this), index](CheckResult result) {
        if (!self || self->m_results.at(index))
            return;
        self->m_results[index] = std::move(result);
        Q_EMIT self->checked(index);
        QTimer::singleShot(0, self, &SelfCheckRunner::runNext);
    });
}

} // namespace tessary

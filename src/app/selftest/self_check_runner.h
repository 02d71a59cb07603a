#pragma once

#include "app/selftest/self_check.h"

#include <QList>
#include <QObject>

#include <memory>
#include <optional>
#include <vector>

namespace tessary {

// Runs checks one after another (so that they never compete for the X server
// or the clipboard), yielding to the event loop between two. Main thread only.
class SelfCheckRunner : public QObject {
    Q_OBJECT

public:
    explicit SelfCheckRunner(std::vector<std::unique_ptr<SelfCheck>> checks, QObject *parent = nullptr);

    void start();

    qsizetype size() const { return qsizetype(m_checks.size()); }
    const QString &name(qsizetype index) const { return m_checks.at(size_t(index))->name(); }
    // None while the check has not finished.
    const std::optional<CheckResult> &result(qsizetype index) const { return m_results.at(index); }
    bool anyFailed() const;

Q_SIGNALS:
    void checked(qsizetype index);
    void finished();

private:
    void runNext();

    std::vector<std::unique_ptr<SelfCheck>> m_checks;
    QList<std::optional<CheckResult>> m_results;
    qsizetype m_next = 0;
};

} // namespace tessary

#pragma once

#include <QString>

namespace tessary {

// What one self-check found. `remedy` says what to do and is empty when the check passed.
struct CheckResult {
    enum class Status { pass, warning, failure };

    Status status = Status::pass;
    QString finding;
    QString remedy;

    static CheckResult passed(QString finding) { return {Status::pass, std::move(finding), {}}; }
    static CheckResult warning(QString finding, QString remedy)
    {
        return {Status::warning, std::move(finding), std::move(remedy)};
    }
    static CheckResult failure(QString finding, QString remedy)
    {
        return {Status::failure, std::move(finding), std::move(remedy)};
    }
};

// "pass", "warning" or "failure".
QString statusName(CheckResult::Status status);

} // namespace tessary

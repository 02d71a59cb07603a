#pragma once

#include "core/platform/process_launcher.h"

#include <QHash>
#include <QList>

namespace tessary {

// Records every program it is asked to start or read and runs none; `output`
// answers from a script keyed by program, `start` always succeeds.
class RecordingProcessLauncher final : public ProcessLauncher {
public:
    struct Call {
        enum class Kind { start, output };
        Kind kind;
        QString program;
        QStringList arguments;
        friend bool operator==(const Call &, const Call &) = default;
    };

    bool start(const QString &program, const QStringList &arguments) override;
    std::optional<QByteArray> output(const QString &program, const QStringList &arguments) override;

    // Every request, in the order it was made.
    const QList<Call> &calls() const { return m_calls; }
    // What `output` gives for `program`; absent unless scripted.
    void setOutput(const QString &program, const QByteArray &output) { m_outputs.insert(program, output); }

private:
    QList<Call> m_calls;
    QHash<QString, QByteArray> m_outputs;
};

} // namespace tessary

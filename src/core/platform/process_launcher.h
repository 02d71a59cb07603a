#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace tessary {

// Starts other programs with exactly the given arguments: no shell, no word
// splitting, no expansion. Main thread.
class ProcessLauncher {
public:
    virtual ~ProcessLauncher() = default;

    // Starts `program` detached with its output discarded and does not wait
    // for it. False when it could not be started.
    virtual bool start(const QString &program, const QStringList &arguments) = 0;

    // Runs `program` to completion, waiting at most a couple of seconds, and
    // gives its standard output. Absent when it could not be started, did not
    // finish in time or did not exit with status 0.
    virtual std::optional<QByteArray> output(const QString &program, const QStringList &arguments) = 0;
};

} // namespace tessary

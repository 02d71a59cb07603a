#include "platform/x11/launcher/detached_process_launcher.h"

#include <QLoggingCategory>
#include <QProcess>

namespace tessary {

namespace {

Q_LOGGING_CATEGORY(lcProcess, "tessary.launcher.process", QtInfoMsg)

constexpr int outputTimeoutMs = 2000;

} // namespace

bool DetachedProcessLauncher::start(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    const bool started = process.startDetached();
    if (!started)
        qCDebug(lcProcess) << "could not start" << program << arguments;
    return started;
}

std::optional<QByteArray> DetachedProcessLauncher::output(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, arguments, QIODevice::ReadOnly);
    if (!process.waitForStarted(outputTimeoutMs)) {
        qCDebug(lcProcess) << "could not start" << program << arguments;
        return std::nullopt;
    }
    if (!process.waitForFinished(outputTimeoutMs)) {
        qCDebug(lcProcess) << "gave up waiting for" << program << arguments;
        process.kill();
        process.waitForFinished(outputTimeoutMs);
        return std::nullopt;
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return std::nullopt;
    return process.readAllStandardOutput();
}

} // namespace tessary

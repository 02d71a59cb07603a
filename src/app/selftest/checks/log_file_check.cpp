#include "app/selftest/checks/log_file_check.h"

#include <QDir>
#include <QFileInfo>

#include <unistd.h>

namespace tessary {

LogFileCheck::LogFileCheck(const SelfCheckContext &context)
    : SelfCheck(QStringLiteral("Log file"))
    , m_context(context)
{
}

void LogFileCheck::run(Done done)
{
    const QString &path = m_context.logPath;
    const QString remedy = QStringLiteral("Make %1 writable by you (and its folder, if the file does not exist yet).")
                               .arg(QDir::toNativeSeparators(path));
    if (QFileInfo::exists(path)) {
        if (::access(QFile::encodeName(path).constData(), W_OK) == 0)
            done(CheckResult::passed(QStringLiteral("%1 is writable.").arg(path)));
        else
            done(CheckResult::failure(QStringLiteral("%1 is not writable.").arg(path), remedy));
        return;
    }
    // Missing folders are created at the first line: the nearest existing one must be writable.
    QDir folder = QFileInfo(path).dir();
    while (!folder.exists() && !folder.isRoot())
        folder.setPath(QFileInfo(folder.path()).path());
    if (::access(QFile::encodeName(folder.path()).constData(), W_OK) == 0)
        done(CheckResult::passed(QStringLiteral("%1 will be created at the first event.").arg(path)));
    else
        done(CheckResult::failure(
            QStringLiteral("%1 cannot be created: %2 is not writable.").arg(path, folder.path()), remedy));
}

} // namespace tessary

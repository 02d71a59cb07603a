#include "core/app/log.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTimeZone>

namespace tessary {

LogFile::LogFile(QString path)
    : m_path(std::move(path))
{
}

QString LogFile::formatLine(const QString &message, const QDateTime &now)
{
    return now.toTimeZone(QTimeZone::utc()).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) + QStringLiteral(" +0000 ")
        + message + QLatin1Char('\n');
}

void LogFile::write(const QString &message, const QDateTime &now) const
{
    const QByteArray line = formatLine(message, now).toUtf8();
    QFile file(m_path);
    if (file.exists()) {
        if (file.open(QIODevice::WriteOnly | QIODevice::Append))
            file.write(line);
        return;
    }
    // First line: write the whole file atomically so a crash never leaves half a line.
    QSaveFile fresh(m_path);
    if (fresh.open(QIODevice::WriteOnly)) {
        fresh.write(line);
        fresh.commit();
    }
}

QString Log::defaultPath()
{
#ifdef Q_OS_MACOS
    return QDir::homePath() + QStringLiteral("/Library/Logs/Tessary.log");
#else
    QString state = qEnvironmentVariable("XDG_STATE_HOME");
    if (state.isEmpty() || !QDir::isAbsolutePath(state))
        state = QDir::homePath() + QStringLiteral("/.local/state");
    return state + QStringLiteral("/Tessary/Tessary.log");
#endif
}

void Log::write(const QString &message)
{
    static const LogFile log = [] {
        const QString path = defaultPath();
#ifndef Q_OS_MACOS
        QDir().mkpath(QFileInfo(path).absolutePath());
#endif
        return LogFile(path);
    }();
    log.write(message);
}

} // namespace tessary

#pragma once

#include <QDateTime>
#include <QString>

namespace tessary {

// The user-facing trace file: one "<UTC timestamp> <message>" line per event,
// appended. Writing never fails from the caller's point of view.
class LogFile {
public:
    explicit LogFile(QString path);

    const QString &path() const { return m_path; }
    void write(const QString &message, const QDateTime &now = QDateTime::currentDateTimeUtc()) const;

    static QString formatLine(const QString &message, const QDateTime &now);

private:
    QString m_path;
};

namespace Log {
// ~/Library/Logs/Tessary.log on macOS; $XDG_STATE_HOME/Tessary/Tessary.log
// (default ~/.local/state) elsewhere. Resolved once, on first use.
QString defaultPath();
void write(const QString &message);
} // namespace Log

} // namespace tessary

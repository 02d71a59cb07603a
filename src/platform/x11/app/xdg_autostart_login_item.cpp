#include "platform/x11/app/xdg_autostart_login_item.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

namespace tessary {

namespace {

constexpr const char *programName = "tessary";

// Desktop-entry quoting: a quoted argument escapes " ` $ \ with a backslash,
// and a literal percent sign is doubled in any Exec value.
QString quotedArgument(const QString &path)
{
    QString quoted;
    for (const QChar c : path) {
        if (c == QLatin1Char('"') || c == QLatin1Char('`') || c == QLatin1Char('$') || c == QLatin1Char('\\'))
            quoted += QLatin1Char('\\');
        quoted += c;
    }
    quoted.replace(QLatin1Char('%'), QLatin1String("%%"));
    return QLatin1Char('"') + quoted + QLatin1Char('"');
}

QString canonical(const QString &path) { return path.isEmpty() ? QString() : QFileInfo(path).canonicalFilePath(); }

} // namespace

XdgAutostartLoginItem::XdgAutostartLoginItem()
    : XdgAutostartLoginItem(
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QLatin1String("/autostart"),
        QCoreApplication::applicationFilePath(), QStandardPaths::findExecutable(QString::fromLatin1(programName)))
{
}

XdgAutostartLoginItem::XdgAutostartLoginItem(QString autostartDirectory, QString programPath, QString installedPath)
    : m_directory(std::move(autostartDirectory))
    , m_program(std::move(programPath))
    , m_installed(std::move(installedPath))
{
}

QString XdgAutostartLoginItem::entryPath() const { return m_directory + QLatin1String("/tessary.desktop"); }

QString XdgAutostartLoginItem::execLine() const
{
    const QString program = canonical(m_program);
    if (!program.isEmpty() && program == canonical(m_installed))
        return QString::fromLatin1(programName);
    return quotedArgument(program.isEmpty() ? m_program : program);
}

LoginItem::Status XdgAutostartLoginItem::status() const
{
    return QFileInfo::exists(entryPath()) ? Status::enabled : Status::disabled;
}

std::optional<QString> XdgAutostartLoginItem::set(bool enabled)
{
    const QString path = entryPath();
    if (!enabled) {
        QFile entry(path);
        if (!entry.exists() || entry.remove())
            return std::nullopt;
        return QStringLiteral("Could not remove %1: %2").arg(path, entry.errorString());
    }
    if (!QDir().mkpath(m_directory))
        return QStringLiteral("Could not create the folder %1.").arg(m_directory);
    QSaveFile entry(path);
    const QString text = QLatin1String("[Desktop Entry]\nType=Application\nName=Tessary\n"
                                       "Comment=Window snapping, launcher and clipboard history\nExec=")
        + execLine() + QLatin1String("\nTerminal=false\nX-GNOME-Autostart-enabled=true\n");
    if (!entry.open(QIODevice::WriteOnly) || entry.write(text.toUtf8()) < 0 || !entry.commit())
        return QStringLiteral("Could not write %1: %2").arg(path, entry.errorString());
    return std::nullopt;
}

} // namespace tessary

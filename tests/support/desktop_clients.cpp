#include "desktop_clients.h"

#include <QProcess>

namespace tessary::DesktopClients {

QString run(const QString &program, const QStringList &arguments, const QByteArray &input)
{
    QProcess process;
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    process.waitForFinished(10000);
    return QString::fromLocal8Bit(process.readAllStandardOutput()).trimmed();
}

QString xdotool(const QStringList &arguments) { return run(QStringLiteral("xdotool"), arguments); }

} // namespace tessary::DesktopClients

#include "app/selftest/checks/login_item_check.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

namespace tessary {

LoginItemCheck::LoginItemCheck()
    : SelfCheck(QStringLiteral("Open at login"))
{
}

void LoginItemCheck::run(Done done)
{
    const QString path = QDir(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation))
                             .filePath(QStringLiteral("autostart/tessary.desktop"));
    if (!QFileInfo::exists(path)) {
        done(CheckResult::passed(QStringLiteral("Off: Tessary does not open at login.")));
        return;
    }
    const QSettings entry(path, QSettings::IniFormat);
    const QString exec = entry.value(QStringLiteral("Desktop Entry/Exec")).toString();
    const QString program = exec.section(QLatin1Char(' '), 0, 0);
    const bool hidden = entry.value(QStringLiteral("Desktop Entry/Hidden")).toString() == QLatin1String("true");
    if (hidden) {
        done(CheckResult::passed(QStringLiteral("Off: %1 is hidden.").arg(path)));
        return;
    }
    if (program.isEmpty() || QStandardPaths::findExecutable(program).isEmpty()) {
        done(CheckResult::failure(
            QStringLiteral("On, but %1 starts \"%2\", which is not an installed program.").arg(path, exec),
            QStringLiteral("Turn Open at Login off and on again in Settings.")));
        return;
    }
    done(CheckResult::passed(QStringLiteral("On: %1 starts %2.").arg(path, exec)));
}

} // namespace tessary

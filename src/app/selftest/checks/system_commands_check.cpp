#include "app/selftest/checks/system_commands_check.h"

#include "core/launcher/system_command.h"

namespace tessary {

SystemCommandsCheck::SystemCommandsCheck()
    : SelfCheck(QStringLiteral("System commands"))
{
}

void SystemCommandsCheck::run(Done done)
{
    const QList<SystemCommand> &offered = SystemCommand::all();
    const QList<SystemCommand> every = SystemCommand::linuxTable([](const QString &name) { return name; });
    QStringList available;
    QStringList missing;
    for (const SystemCommand &command : every) {
        const bool found = std::any_of(offered.cbegin(), offered.cend(),
            [&command](const SystemCommand &candidate) { return candidate.id == command.id; });
        (found ? available : missing).append(command.title);
    }
    QString finding = QStringLiteral("%1 of %2 available").arg(available.size()).arg(every.size());
    // Commands whose program a desktop does not have are simply not offered: nothing to fix.
    if (!missing.isEmpty())
        finding += QStringLiteral("; not offered here: ") + missing.join(QStringLiteral(", "));
    if (available.isEmpty()) {
        done(CheckResult::warning(finding + QLatin1Char('.'),
            QStringLiteral("Install the programs the commands use (loginctl, systemctl, gio) to have them in the "
                           "launcher.")));
        return;
    }
    done(CheckResult::passed(finding + QLatin1Char('.')));
}

} // namespace tessary

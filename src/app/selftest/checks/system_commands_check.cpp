#include "app/selftest/checks/system_commands_check.h"

#include "core/launcher/system_command.h"
#include "platform/x11/launcher/detached_process_launcher.h"
#include "platform/x11/launcher/session/desktop_session_control.h"

#include <QTimer>

#include <utility>

namespace tessary {

SystemCommandsCheck::SystemCommandsCheck()
    : SelfCheck(QStringLiteral("System commands"))
{
}

SystemCommandsCheck::~SystemCommandsCheck() = default;

void SystemCommandsCheck::run(Done done)
{
    m_done = std::move(done);
    m_processes = std::make_unique<DetachedProcessLauncher>();
    m_session = std::make_unique<DesktopSessionControl>(DesktopSessionControl::Environment::current(), *m_processes);
    connect(m_session.get(), &DesktopSessionControl::probed, this, &SystemCommandsCheck::finish);
    QTimer::singleShot(probeTimeoutMs, this, &SystemCommandsCheck::finish);
}

void SystemCommandsCheck::finish()
{
    if (!m_done)
        return;
    const Done done = std::exchange(m_done, nullptr);
    QStringList available;
    QStringList missing;
    for (const SystemCommand &command : SystemCommand::sessionTable(*m_session, [](const QString &) {})) {
        const bool offered = !command.offered || command.offered();
        (offered ? available : missing).append(command.title);
    }
    QString finding = QStringLiteral("%1 of %2 available").arg(available.size()).arg(available.size() + missing.size());
    // What a desktop has no service or program for is simply not offered: nothing to fix.
    if (!missing.isEmpty())
        finding += QStringLiteral("; not offered here: ") + missing.join(QStringLiteral(", "));
    if (available.isEmpty()) {
        done(CheckResult::warning(finding + QLatin1Char('.'),
            QStringLiteral(
                "Run Tessary in a desktop session with a session bus (D-Bus) to have them in the launcher.")));
        return;
    }
    done(CheckResult::passed(finding + QLatin1Char('.')));
}

} // namespace tessary

#include "app/selftest/checks/tray_check.h"

#include <QSystemTrayIcon>

namespace tessary {

TrayCheck::TrayCheck(const SelfCheckContext &context)
    : SelfCheck(QStringLiteral("System tray"))
    , m_context(context)
{
}

void TrayCheck::run(Done done)
{
    if (m_context.x11 && QSystemTrayIcon::isSystemTrayAvailable()) {
        done(CheckResult::passed(QStringLiteral("A tray host shows the Tessary menu.")));
        return;
    }
    done(CheckResult::warning(
        QStringLiteral("The desktop has no system tray: the Tessary menu is unavailable; the shortcuts still work."),
        QStringLiteral("Add a system tray (notification area) to your panel, or run a tray host such as trayer or "
                       "stalonetray.")));
}

} // namespace tessary

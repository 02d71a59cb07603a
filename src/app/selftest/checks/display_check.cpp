#include "app/selftest/checks/display_check.h"

#include "core/windows/geometry.h"
#include "platform/x11/windows/x11_monitors.h"
#include "platform/x11/windows/x11_screens.h"

namespace tessary {

namespace {

QString area(const Rect &rect)
{
    return QStringLiteral("%1×%2+%3+%4").arg(rect.absWidth()).arg(rect.absHeight()).arg(rect.minX()).arg(rect.minY());
}

} // namespace

DisplayCheck::DisplayCheck(const SelfCheckContext &context)
    : SelfCheck(QStringLiteral("X display and monitors"))
    , m_context(context)
{
}

void DisplayCheck::run(Done done)
{
    if (!m_context.x11) {
        done(noDisplay(m_context));
        return;
    }
    const QList<QRect> monitors = X11Monitors::read(*m_context.x11);
    const QList<ScreenInfo> screens = X11Screens(*m_context.x11).screens();
    if (monitors.isEmpty() || screens.size() != monitors.size()) {
        done(CheckResult::failure(QStringLiteral("The X server reports no monitors."),
            QStringLiteral("Check the monitor layout with xrandr --listmonitors.")));
        return;
    }
    const double primaryHeight = screens.first().frame.absHeight();
    QStringList parts;
    bool unusable = false;
    for (qsizetype i = 0; i < screens.size(); ++i) {
        const QRect &monitor = monitors.at(i);
        const Rect usable = Geometry::flip(screens.at(i).visible, primaryHeight);
        unusable = unusable || usable.absWidth() < 1 || usable.absHeight() < 1;
        parts.append(QStringLiteral("%1×%2+%3+%4 (usable %5)")
                         .arg(monitor.width())
                         .arg(monitor.height())
                         .arg(monitor.x())
                         .arg(monitor.y())
                         .arg(area(usable)));
    }
    const QString finding
        = QStringLiteral("Display %1, %2: %3")
              .arg(qEnvironmentVariable("DISPLAY"),
                  screens.size() == 1 ? QStringLiteral("1 monitor") : QStringLiteral("%1 monitors").arg(screens.size()),
                  parts.join(QStringLiteral("; ")));
    if (unusable) {
        done(CheckResult::failure(
            finding, QStringLiteral("A panel or dock reserves a whole monitor: check the struts of your panels.")));
        return;
    }
    done(CheckResult::passed(finding));
}

} // namespace tessary

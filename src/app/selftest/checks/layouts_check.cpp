#include "app/selftest/checks/layouts_check.h"

#include "app/selftest/checks/behaviour_result.h"
#include "core/windows/geometry.h"
#include "platform/x11/windows/x11_screens.h"

#include <cmath>

namespace tessary {

namespace {

// The expected frame: the layout's share of `visible` with whole-point edges,
// or for `center` a half-size window moved to the middle.
Rect expected(Layout layout, const Rect &visible, const Rect &window)
{
    const std::optional<Rect> unit = unitRect(layout);
    if (!unit) {
        return {std::round(visible.midX() - window.width / 2), std::round(visible.midY() - window.height / 2),
            window.width, window.height};
    }
    const double x0 = visible.minX() + unit->x * visible.absWidth();
    const double x1 = x0 + unit->width * visible.absWidth();
    const double y0 = visible.minY() + unit->y * visible.absHeight();
    const double y1 = y0 + unit->height * visible.absHeight();
    return {std::round(x0), std::round(y0), std::round(x1 - x0), std::round(y1 - y0)};
}

QString text(const Rect &rect)
{
    return QStringLiteral("%1×%2+%3+%4").arg(rect.width).arg(rect.height).arg(rect.x).arg(rect.y);
}

} // namespace

LayoutsCheck::LayoutsCheck(const SelfCheckContext &context)
    : SelfCheck(QStringLiteral("Layouts"))
    , m_context(context)
{
}

void LayoutsCheck::run(Done done)
{
    if (!m_context.x11) {
        done(noDisplay(m_context));
        return;
    }
    const QList<ScreenInfo> screens = X11Screens(*m_context.x11).screens();
    QStringList mismatches;
    for (qsizetype i = 0; i < screens.size(); ++i) {
        const Rect &visible = screens.at(i).visible;
        const Rect window{
            visible.x + 10, visible.y + 10, std::round(visible.absWidth() / 2), std::round(visible.absHeight() / 2)};
        for (const Layout layout : Layouts::allCases) {
            const Rect target = Geometry::target(layout, visible, 0, window);
            const Rect wanted = expected(layout, visible, window);
            // One point of slack: edges and sizes may round apart.
            if (!Geometry::approx(target, wanted, 1)) {
                mismatches.append(QStringLiteral("%1 on monitor %2 is %3, not %4")
                                      .arg(rawValue(layout))
                                      .arg(i + 1)
                                      .arg(text(target), text(wanted)));
            }
        }
    }
    done(behaviourResult(mismatches,
        QStringLiteral("All %1 layouts land where expected on every monitor.").arg(Layouts::allCases.size())));
}

} // namespace tessary

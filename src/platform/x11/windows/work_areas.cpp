#include "platform/x11/windows/work_areas.h"

namespace tessary {
namespace {

qint64 overlap(const QRect &a, const QRect &b)
{
    const QRect common = a.intersected(b);
    return common.isEmpty() ? 0 : qint64(common.width()) * common.height();
}

} // namespace

QRect usableArea(const QRect &monitor, QSize root, const WorkAreaHints &hints)
{
    if (!hints.perMonitor.isEmpty()) {
        // The list's order need not follow the monitors': take the area that is this monitor's.
        QRect best;
        for (const QRect &area : hints.perMonitor) {
            if (overlap(area, monitor) > overlap(best, monitor))
                best = area;
        }
        return best.isEmpty() ? monitor : best.intersected(monitor);
    }
    if (!hints.struts.isEmpty())
        return usableArea(monitor, root, hints.struts);
    if (hints.desktopWide) {
        const QRect common = hints.desktopWide->intersected(monitor);
        if (!common.isEmpty())
            return common;
    }
    return monitor;
}

} // namespace tessary

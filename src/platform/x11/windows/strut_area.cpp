#include "platform/x11/windows/strut_area.h"

#include <algorithm>

namespace tessary {
namespace {

// Whether the inclusive span [start, end] overlaps the half-open [from, to).
bool spans(quint32 start, quint32 end, int from, int to)
{
    return start <= end && qint64(start) < to && qint64(end) >= from;
}

} // namespace

std::optional<Strut> Strut::fromPartial(const QList<quint32> &v)
{
    if (v.size() != 12)
        return std::nullopt;
    return Strut{v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], v[8], v[9], v[10], v[11]};
}

std::optional<Strut> Strut::fromFull(const QList<quint32> &v, QSize root)
{
    if (v.size() != 4 || root.isEmpty())
        return std::nullopt;
    const auto lastX = quint32(root.width() - 1);
    const auto lastY = quint32(root.height() - 1);
    return Strut{v[0], v[1], v[2], v[3], 0, lastY, 0, lastY, 0, lastX, 0, lastX};
}

QRect usableArea(const QRect &monitor, QSize root, const QList<Strut> &struts)
{
    // Half-open edges; a strut moves at most the edge it faces.
    const int mx0 = monitor.x(), my0 = monitor.y();
    const int mx1 = mx0 + monitor.width(), my1 = my0 + monitor.height();
    int x0 = mx0, y0 = my0, x1 = mx1, y1 = my1;
    for (const Strut &s : struts) {
        const qint64 leftEdge = s.left;
        if (s.left > 0 && leftEdge > mx0 && leftEdge <= mx1 && spans(s.leftStartY, s.leftEndY, my0, my1))
            x0 = std::max<qint64>(x0, leftEdge);
        const qint64 rightEdge = qint64(root.width()) - s.right;
        if (s.right > 0 && rightEdge >= mx0 && rightEdge < mx1 && spans(s.rightStartY, s.rightEndY, my0, my1))
            x1 = std::min<qint64>(x1, rightEdge);
        const qint64 topEdge = s.top;
        if (s.top > 0 && topEdge > my0 && topEdge <= my1 && spans(s.topStartX, s.topEndX, mx0, mx1))
            y0 = std::max<qint64>(y0, topEdge);
        const qint64 bottomEdge = qint64(root.height()) - s.bottom;
        if (s.bottom > 0 && bottomEdge >= my0 && bottomEdge < my1 && spans(s.bottomStartX, s.bottomEndX, mx0, mx1))
            y1 = std::min<qint64>(y1, bottomEdge);
    }
    if (x1 <= x0 || y1 <= y0)
        return monitor;
    return QRect(x0, y0, x1 - x0, y1 - y0);
}

} // namespace tessary

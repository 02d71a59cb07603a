#pragma once

#include <QList>
#include <QRect>
#include <QSize>

#include <optional>

namespace tessary {

// Space a dock or panel reserves along an edge of the whole X screen, as
// _NET_WM_STRUT_PARTIAL gives it: a thickness measured from that root edge and
// the span it covers along the edge (inclusive pixel coordinates).
struct Strut {
    quint32 left = 0, right = 0, top = 0, bottom = 0;
    quint32 leftStartY = 0, leftEndY = 0, rightStartY = 0, rightEndY = 0;
    quint32 topStartX = 0, topEndX = 0, bottomStartX = 0, bottomEndX = 0;

    // From the twelve values of _NET_WM_STRUT_PARTIAL; none for another count.
    static std::optional<Strut> fromPartial(const QList<quint32> &values);
    // From the four values of the older _NET_WM_STRUT, which span whole edges.
    static std::optional<Strut> fromFull(const QList<quint32> &values, QSize root);

    friend bool operator==(const Strut &, const Strut &) = default;
};

// The part of `monitor` (root coordinates) left free by `struts`. A strut
// counts for a monitor only when its inner edge lies inside that monitor and
// its span overlaps it, so a panel at the inner edge of one monitor does not
// shrink its neighbour.
QRect usableArea(const QRect &monitor, QSize root, const QList<Strut> &struts);

} // namespace tessary

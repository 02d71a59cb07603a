#include "core/windows/drag_snapper.h"

#include "core/windows/ax.h"
#include "core/windows/window_manager.h"
#include "core/windows/windows_logging.h"

#include <QPointer>
#include <QTimer>

#include <cmath>

namespace tessary {

namespace {

// How close to an edge the pointer must be, and how far from a corner along
// that edge still counts as the corner; both bounds included.
constexpr double edgeBand = 6;
constexpr double cornerReach = 40;
// Size change up to which the window still counts as moved, not resized.
constexpr double resizeTolerance = 4;
// Origin travel a drag must exceed.
constexpr double minimumTravel = 10;

} // namespace

DragSnapper::DragSnapper(WindowManager &manager, Accessibility &accessibility, Workspace &workspace, Screens &screens,
    MouseMonitor &mouse, QObject *parent)
    : QObject(parent)
    , m_manager(manager)
    , m_accessibility(accessibility)
    , m_workspace(workspace)
    , m_screens(screens)
    , m_mouse(mouse)
{
}

void DragSnapper::start()
{
    if (m_started)
        return;
    const QPointer<DragSnapper> self(this);
    m_started = m_mouse.listen(
        [self] {
            if (self)
                self->onMouseDown();
        },
        [self] {
            if (self)
                self->onMouseUp();
        });
    if (!m_started)
        qCWarning(lcWindows) << "no global mouse monitor: drag snapping is unavailable";
}

std::optional<Layout> DragSnapper::zone(QPointF pointer, const Rect &screen, double scale)
{
    const double x = pointer.x();
    const double y = pointer.y();
    const double band = edgeBand * scale;
    const double reach = cornerReach * scale;
    const bool atLeft = x <= screen.minX() + band;
    const bool atRight = x >= screen.maxX() - band;
    const bool atTop = y >= screen.maxY() - band;
    const bool atBottom = y <= screen.minY() + band;
    const bool nearLeft = x <= screen.minX() + reach;
    const bool nearRight = x >= screen.maxX() - reach;
    const bool nearTop = y >= screen.maxY() - reach;
    const bool nearBottom = y <= screen.minY() + reach;

    if ((atLeft && nearTop) || (atTop && nearLeft))
        return Layout::topLeft;
    if ((atRight && nearTop) || (atTop && nearRight))
        return Layout::topRight;
    if ((atLeft && nearBottom) || (atBottom && nearLeft))
        return Layout::bottomLeft;
    if ((atRight && nearBottom) || (atBottom && nearRight))
        return Layout::bottomRight;
    if (atLeft)
        return Layout::leftHalf;
    if (atRight)
        return Layout::rightHalf;
    if (atTop)
        return Layout::maximize;
    return std::nullopt;
}

void DragSnapper::onMouseDown()
{
    m_startKey.reset();
    m_startFrame.reset();
    if (!m_enabled || !m_accessibility.isTrusted())
        return;
    const quint64 generation = ++m_generation;
    QTimer::singleShot(captureDelay, this, [this, generation] { capture(generation); });
}

void DragSnapper::capture(quint64 generation)
{
    if (generation != m_generation)
        return;
    const std::optional<AX::FrontWindow> front = AX::frontWindow(m_workspace, m_accessibility);
    if (!front)
        return;
    const std::optional<Rect> frame = m_accessibility.frame(front->window);
    if (!frame)
        return;
    m_startKey = AX::key(m_accessibility, front->window, front->app.pid);
    m_startFrame = frame;
}

void DragSnapper::onMouseUp()
{
    snapDroppedWindow();
    reset();
}

void DragSnapper::snapDroppedWindow()
{
    if (!m_enabled || !m_accessibility.isTrusted() || !m_startKey || !m_startFrame)
        return;
    const std::optional<AX::FrontWindow> front = AX::frontWindow(m_workspace, m_accessibility);
    if (!front || AX::key(m_accessibility, front->window, front->app.pid) != *m_startKey)
        return;
    const std::optional<Rect> now = m_accessibility.frame(front->window);
    if (!now)
        return;

    const QPointF pointer = m_screens.pointerLocation();
    for (const ScreenInfo &screen : m_screens.screens()) {
        if (!screen.frame.contains(pointer.x(), pointer.y()))
            continue;
        const std::optional<Layout> layout = zone(pointer, screen.frame, screen.scale);
        if (!layout || !wasDragged(*now, screen.scale))
            return;
        // A window manager that tiles windows dropped at an edge does so on
        // the same release: its frame is the one to keep, not a second one.
        // The generation the reset after this press gives: a new press voids it.
        QTimer::singleShot(windowManagerGrace, this,
            [this, drop = Drop{*layout, *front, *now, *m_startKey, *m_startFrame}, generation = m_generation + 1] {
                if (generation == m_generation)
                    apply(drop);
            });
        return;
    }
}

void DragSnapper::apply(const Drop &drop)
{
    if (!m_enabled || m_accessibility.frame(drop.front.window) != drop.frame)
        return;
    m_manager.remember(drop.startKey, drop.startFrame);
    m_manager.apply(drop.layout, drop.front.window, drop.front.app.pid,
        [layout = drop.layout](const WindowManager::ApplyResult &r) {
            if (!r.succeeded())
                qCDebug(lcWindows) << "drag snap to" << rawValue(layout) << "failed";
        });
}

bool DragSnapper::wasDragged(const Rect &now, double scale) const
{
    const Rect &start = *m_startFrame;
    const double tolerance = resizeTolerance * scale;
    const bool sameSize
        = std::abs(now.width - start.width) <= tolerance && std::abs(now.height - start.height) <= tolerance;
    return sameSize && std::hypot(now.x - start.x, now.y - start.y) > minimumTravel * scale;
}

void DragSnapper::reset()
{
    m_startKey.reset();
    m_startFrame.reset();
    ++m_generation;
}

} // namespace tessary

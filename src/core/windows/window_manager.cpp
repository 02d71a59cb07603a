#include "core/windows/window_manager.h"

#include "core/windows/ax.h"
#include "core/windows/geometry.h"
#include "core/windows/windows_logging.h"

#include <QList>

#include <vector>

namespace tessary {

namespace {

double primaryHeight(const QList<ScreenInfo> &screens) { return screens.isEmpty() ? 0 : screens.first().frame.height; }

std::size_t displayIndex(const Rect &desktopFrame, const QList<ScreenInfo> &screens)
{
    std::vector<Rect> frames;
    frames.reserve(screens.size());
    for (const ScreenInfo &screen : screens)
        frames.push_back(screen.frame);
    return Geometry::screenIndex(desktopFrame, frames);
}

} // namespace

QString WindowManager::errorDescription(Failure failure)
{
    switch (failure) {
    case Failure::noPermission:
        return QStringLiteral("Tessary needs Accessibility permission to move windows.");
    case Failure::noWindow:
        return QStringLiteral("No window to move.");
    case Failure::fullScreen:
        return QStringLiteral("Full-screen windows can't be snapped.");
    case Failure::cannotMove:
        return QStringLiteral("This window can't be moved or resized.");
    }
    return {};
}

std::optional<Layout> WindowManager::ApplyResult::layout() const
{
    if (const Layout *applied = std::get_if<Layout>(&m_value))
        return *applied;
    return std::nullopt;
}

std::optional<WindowManager::Failure> WindowManager::ApplyResult::failure() const
{
    if (const Failure *failed = std::get_if<Failure>(&m_value))
        return *failed;
    return std::nullopt;
}

WindowManager::WindowManager(Accessibility &accessibility, Workspace &workspace, Screens &screens)
    : m_accessibility(accessibility)
    , m_workspace(workspace)
    , m_screens(screens)
{
}

WindowManager::ApplyResult WindowManager::apply(Layout layout, WindowId window, qint64 pid)
{
    if (m_accessibility.isFullScreen(window))
        return Failure::fullScreen;
    const std::optional<Rect> frame = m_accessibility.frame(window);
    if (!frame)
        return Failure::cannotMove;
    const QList<ScreenInfo> screens = m_screens.screens();
    if (screens.isEmpty())
        return Failure::noWindow;

    const double height = primaryHeight(screens);
    const Rect desktopFrame = Geometry::flip(*frame, height);
    const Rect visible = screens.at(qsizetype(displayIndex(desktopFrame, screens))).visible;
    const QString key = AX::key(m_accessibility, window, pid);
    remember(key, *frame);

    const Rect cycling = Geometry::flip(cyclingFrame(key, *frame), height);
    const Layout effective = Geometry::resolve(layout, cycling, visible, m_gap);
    const Rect written = Geometry::flip(Geometry::target(effective, visible, m_gap, desktopFrame), height);
    if (!m_accessibility.setFrame(window, written)) {
        qCDebug(lcWindows) << "window" << window << "refused" << rawValue(effective);
        return Failure::cannotMove;
    }
    if (const std::optional<Rect> settled = m_accessibility.frame(window))
        m_snaps.insert(key, {written, *settled});
    else
        m_snaps.remove(key);
    return effective;
}

Rect WindowManager::cyclingFrame(const QString &key, const Rect &frame) const
{
    const auto snap = m_snaps.constFind(key);
    if (snap != m_snaps.cend() && Geometry::approx(frame, snap->settled, Geometry::cycleTolerance))
        return snap->written;
    return frame;
}

std::optional<WindowManager::Failure> WindowManager::restore()
{
    if (!m_accessibility.isTrusted())
        return Failure::noPermission;
    const std::optional<AX::FrontWindow> front = AX::frontWindow(m_workspace, m_accessibility);
    if (!front)
        return Failure::noWindow;
    const auto entry = m_originals.constFind(AX::key(m_accessibility, front->window, front->app.pid));
    if (entry == m_originals.constEnd())
        return std::nullopt;
    const Rect original = *entry;
    m_originals.erase(entry);
    if (!m_accessibility.setFrame(front->window, original))
        return Failure::cannotMove;
    return std::nullopt;
}

std::optional<WindowManager::Failure> WindowManager::moveToDisplay(bool next)
{
    if (!m_accessibility.isTrusted())
        return Failure::noPermission;
    const std::optional<AX::FrontWindow> front = AX::frontWindow(m_workspace, m_accessibility);
    if (!front)
        return Failure::noWindow;
    if (m_accessibility.isFullScreen(front->window))
        return Failure::cannotMove;
    const std::optional<Rect> frame = m_accessibility.frame(front->window);
    if (!frame)
        return Failure::cannotMove;
    const QList<ScreenInfo> screens = m_screens.screens();
    const qsizetype count = screens.size();
    if (count < 2)
        return std::nullopt;

    const double height = primaryHeight(screens);
    const Rect desktopFrame = Geometry::flip(*frame, height);
    const qsizetype current = qsizetype(displayIndex(desktopFrame, screens));
    const qsizetype destination = next ? (current + 1) % count : (current + count - 1) % count;
    const Rect carried = Geometry::remap(desktopFrame, screens.at(current).visible, screens.at(destination).visible);
    if (!m_accessibility.setFrame(front->window, Geometry::flip(carried, height)))
        return Failure::cannotMove;
    return std::nullopt;
}

void WindowManager::remember(const QString &key, const Rect &frame)
{
    if (!m_originals.contains(key))
        m_originals.insert(key, frame);
}

} // namespace tessary

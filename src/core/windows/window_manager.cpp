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

void WindowManager::apply(Layout layout, WindowId window, qint64 pid, ApplyDone done)
{
    if (m_accessibility.isFullScreen(window))
        return done(Failure::fullScreen);
    const QString key = AX::key(m_accessibility, window, pid);
    const std::optional<Rect> frame = currentFrame(key, window);
    if (!frame)
        return done(Failure::cannotMove);
    const QList<ScreenInfo> screens = m_screens.screens();
    if (screens.isEmpty())
        return done(Failure::noWindow);

    const double height = primaryHeight(screens);
    const Rect desktopFrame = Geometry::flip(*frame, height);
    const ScreenInfo &display = screens.at(qsizetype(displayIndex(desktopFrame, screens)));
    const double gap = m_gap * display.scale;
    const double tolerance = Geometry::cycleTolerance * display.scale;
    remember(key, *frame);

    const Rect cycling = Geometry::flip(cyclingFrame(key, *frame, tolerance), height);
    const Layout effective = Geometry::resolve(layout, cycling, display.visible, gap, tolerance);
    const Rect written = Geometry::flip(Geometry::target(effective, display.visible, gap, desktopFrame), height);
    write(key, window, written, [this, key, window, written, effective, done = std::move(done)](bool moved) {
        if (!moved) {
            qCDebug(lcWindows) << "window" << window << "refused" << rawValue(effective);
            return done(Failure::cannotMove);
        }
        if (const std::optional<Rect> settled = m_accessibility.frame(window))
            m_snaps.insert(key, {written, *settled});
        else
            m_snaps.remove(key);
        done(effective);
    });
}

Rect WindowManager::cyclingFrame(const QString &key, const Rect &frame, double tolerance) const
{
    const auto writing = m_writing.constFind(key);
    if (writing != m_writing.cend())
        return writing->frame;
    const auto snap = m_snaps.constFind(key);
    if (snap != m_snaps.cend() && Geometry::approx(frame, snap->settled, tolerance))
        return snap->written;
    return frame;
}

std::optional<Rect> WindowManager::currentFrame(const QString &key, WindowId window) const
{
    const auto writing = m_writing.constFind(key);
    if (writing != m_writing.cend())
        return writing->frame;
    return m_accessibility.frame(window);
}

void WindowManager::write(
    const QString &key, WindowId window, const Rect &frame, std::function<void(bool moved)> finished)
{
    const quint64 serial = ++m_lastWrite;
    m_writing.insert(key, {serial, frame});
    m_accessibility.setFrame(window, frame, this, [this, key, serial, finished = std::move(finished)](bool moved) {
        const auto writing = m_writing.constFind(key);
        if (writing == m_writing.cend() || writing->serial != serial)
            return;
        m_writing.erase(writing);
        finished(moved);
    });
}

void WindowManager::restore(Done done)
{
    if (!m_accessibility.isTrusted())
        return done(Failure::noPermission);
    const std::optional<AX::FrontWindow> front = AX::frontWindow(m_workspace, m_accessibility);
    if (!front)
        return done(Failure::noWindow);
    const QString key = AX::key(m_accessibility, front->window, front->app.pid);
    const auto entry = m_originals.constFind(key);
    if (entry == m_originals.constEnd())
        return done(std::nullopt);
    const Rect original = *entry;
    m_originals.erase(entry);
    write(key, front->window, original,
        [done = std::move(done)](bool moved) { done(moved ? std::nullopt : std::optional(Failure::cannotMove)); });
}

void WindowManager::moveToDisplay(bool next, Done done)
{
    if (!m_accessibility.isTrusted())
        return done(Failure::noPermission);
    const std::optional<AX::FrontWindow> front = AX::frontWindow(m_workspace, m_accessibility);
    if (!front)
        return done(Failure::noWindow);
    if (m_accessibility.isFullScreen(front->window))
        return done(Failure::cannotMove);
    const QString key = AX::key(m_accessibility, front->window, front->app.pid);
    const std::optional<Rect> frame = currentFrame(key, front->window);
    if (!frame)
        return done(Failure::cannotMove);
    const QList<ScreenInfo> screens = m_screens.screens();
    const qsizetype count = screens.size();
    if (count < 2)
        return done(std::nullopt);

    const double height = primaryHeight(screens);
    const Rect desktopFrame = Geometry::flip(*frame, height);
    const qsizetype current = qsizetype(displayIndex(desktopFrame, screens));
    const qsizetype destination = next ? (current + 1) % count : (current + count - 1) % count;
    const Rect carried = Geometry::remap(desktopFrame, screens.at(current).visible, screens.at(destination).visible);
    write(key, front->window, Geometry::flip(carried, height),
        [done = std::move(done)](bool moved) { done(moved ? std::nullopt : std::optional(Failure::cannotMove)); });
}

void WindowManager::remember(const QString &key, const Rect &frame)
{
    if (!m_originals.contains(key))
        m_originals.insert(key, frame);
}

} // namespace tessary

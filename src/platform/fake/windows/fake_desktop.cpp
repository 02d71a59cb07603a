#include "platform/fake/windows/fake_desktop.h"

#include <QtGlobal>

#include <cmath>
#include <utility>

namespace tessary {

namespace {

double stepDown(double size, double step) { return step > 0 ? std::floor(size / step) * step : size; }

} // namespace

FakeDesktop::FakeDesktop()
    : m_ownApp{1000, QStringLiteral("tessary"), QStringLiteral("Tessary")}
{
    m_apps.append(m_ownApp);
}

WindowId FakeDesktop::addWindow(const RunningApp &owner, const Rect &frame)
{
    const WindowId id = m_nextWindow++;
    m_windows.insert(id, Window{owner, frame});
    if (!m_apps.contains(owner))
        m_apps.append(owner);
    activate(id);
    return id;
}

void FakeDesktop::closeWindow(WindowId id)
{
    const qint64 pid = window(id).owner.pid;
    m_windows.remove(id);
    if (m_focused.value(pid) == id)
        m_focused.remove(pid);
}

void FakeDesktop::activate(WindowId id)
{
    const RunningApp owner = window(id).owner;
    m_focused.insert(owner.pid, id);
    m_frontmost = owner;
    if (owner.pid != m_ownApp.pid)
        m_menuBarOwner = owner;
}

void FakeDesktop::activateOwnApp() { m_frontmost = m_ownApp; }

void FakeDesktop::placeWindow(WindowId id, const Rect &frame) { window(id).frame = frame; }

Rect FakeDesktop::windowFrame(WindowId id) const { return window(id).frame; }

void FakeDesktop::setFullScreen(WindowId id, bool fullScreen) { window(id).fullScreen = fullScreen; }

void FakeDesktop::setAcceptsMoves(WindowId id, bool accepts) { window(id).acceptsMoves = accepts; }

void FakeDesktop::setAcceptsResizes(WindowId id, bool accepts) { window(id).acceptsResizes = accepts; }

void FakeDesktop::setSizeStep(WindowId id, QSizeF step) { window(id).sizeStep = step; }

void FakeDesktop::setFrameReadable(WindowId id, bool readable) { window(id).frameReadable = readable; }

int FakeDesktop::frameWrites(WindowId id) const { return window(id).writes; }

void FakeDesktop::pressLeft()
{
    for (qsizetype i = 0; i < m_mouseListeners.size(); ++i) {
        if (const auto onDown = m_mouseListeners[i].first)
            onDown();
    }
}

void FakeDesktop::releaseLeft()
{
    for (qsizetype i = 0; i < m_mouseListeners.size(); ++i) {
        if (const auto onUp = m_mouseListeners[i].second)
            onUp();
    }
}

bool FakeDesktop::requestTrust()
{
    ++m_trustRequests;
    if (m_grantsTrust)
        m_trusted = true;
    return m_trusted;
}

std::optional<WindowId> FakeDesktop::focusedWindow(const RunningApp &app) const
{
    const auto it = m_focused.constFind(app.pid);
    if (it == m_focused.cend())
        return std::nullopt;
    return *it;
}

std::optional<Rect> FakeDesktop::frame(WindowId id) const
{
    const auto it = m_windows.constFind(id);
    if (it == m_windows.cend() || !it->frameReadable)
        return std::nullopt;
    return it->frame;
}

void FakeDesktop::setFrame(WindowId id, const Rect &frame, const QObject *context, std::function<void(bool moved)> done)
{
    HeldWrite held{id, frame, context, std::move(done)};
    if (!m_holdsWrites) {
        complete(held, write(id, frame));
        return;
    }
    for (qsizetype i = 0; i < m_heldWrites.size(); ++i) {
        if (m_heldWrites.at(i).window == id) {
            const HeldWrite superseded = m_heldWrites.takeAt(i);
            complete(superseded, false);
            break;
        }
    }
    m_heldWrites.append(std::move(held));
}

void FakeDesktop::finishFrameWrites()
{
    const QList<HeldWrite> writes = std::exchange(m_heldWrites, {});
    for (const HeldWrite &held : writes)
        complete(held, write(held.window, held.frame));
}

void FakeDesktop::complete(const HeldWrite &write, bool moved)
{
    if (write.context)
        write.done(moved);
}

bool FakeDesktop::write(WindowId id, const Rect &frame)
{
    const auto it = m_windows.find(id);
    if (it == m_windows.end())
        return false;
    ++it->writes;
    if (it->acceptsResizes) {
        it->frame.width = stepDown(frame.width, it->sizeStep.width());
        it->frame.height = stepDown(frame.height, it->sizeStep.height());
    }
    if (it->acceptsMoves) {
        it->frame.x = frame.x;
        it->frame.y = frame.y;
    }
    return it->acceptsMoves && it->acceptsResizes;
}

bool FakeDesktop::isFullScreen(WindowId id) const
{
    const auto it = m_windows.constFind(id);
    return it != m_windows.cend() && it->fullScreen;
}

quint64 FakeDesktop::windowHash(WindowId id) const
{
    // Distinct per window and unrelated to the id's numeric value, as handle
    // hashes are on real desktops.
    return id * 2654435761u;
}

QList<RunningApp> FakeDesktop::runningApplications() const { return m_apps; }

bool FakeDesktop::listen(std::function<void()> onLeftDown, std::function<void()> onLeftUp)
{
    if (!m_mouseAvailable)
        return false;
    m_mouseListeners.append({std::move(onLeftDown), std::move(onLeftUp)});
    return true;
}

FakeDesktop::Window &FakeDesktop::window(WindowId id)
{
    Q_ASSERT_X(m_windows.contains(id), "FakeDesktop", "unknown window");
    return m_windows[id];
}

const FakeDesktop::Window &FakeDesktop::window(WindowId id) const
{
    Q_ASSERT_X(m_windows.contains(id), "FakeDesktop", "unknown window");
    return *m_windows.constFind(id);
}

} // namespace tessary

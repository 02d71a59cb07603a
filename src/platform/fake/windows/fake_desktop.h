#pragma once

#include "core/platform/accessibility.h"
#include "core/platform/mouse_monitor.h"
#include "core/platform/screens.h"
#include "core/platform/workspace.h"

#include <QHash>
#include <QList>
#include <QPointF>
#include <QPointer>
#include <QSizeF>

#include <functional>
#include <optional>
#include <utility>

namespace tessary {

// A scriptable in-memory desktop: applications with windows, displays, the
// active window and the pointer. Tests arrange it with the scripting calls and
// hand it to the code under test as its Accessibility, Workspace, Screens and
// MouseMonitor. Frames are in accessibility coordinates (top-left origin, y
// down), screens and the pointer in desktop coordinates, as on the ports.
//
// A new desktop is trusted, has no displays, no windows and nothing active;
// this process is the application "Tessary" with pid ownPid().
class FakeDesktop final : public Accessibility, public Workspace, public Screens, public MouseMonitor {
public:
    FakeDesktop();

    // --- Scripting -------------------------------------------------------

    RunningApp ownApp() const { return m_ownApp; }
    // Opens a window of `owner` and activates it, as a newly mapped window is.
    WindowId addWindow(const RunningApp &owner, const Rect &frame);
    void closeWindow(WindowId window);
    // Makes `window` its application's focused window and that application
    // the frontmost one and the one the user was last working in.
    void activate(WindowId window);
    // One of this process's own panels becomes active; the last other
    // application stays the menu-bar owner.
    void activateOwnApp();
    void setMenuBarOwner(const std::optional<RunningApp> &app) { m_menuBarOwner = app; }
    void setTrusted(bool trusted) { m_trusted = trusted; }
    // Whether asking for trust grants it; false by default.
    void setGrantsTrustWhenAsked(bool grants) { m_grantsTrust = grants; }
    int trustRequests() const { return m_trustRequests; }
    int privacySettingsOpenings() const { return m_privacyOpenings; }

    // Moves or resizes a window as its user would (not through setFrame).
    void placeWindow(WindowId window, const Rect &frame);
    Rect windowFrame(WindowId window) const;
    void setFullScreen(WindowId window, bool fullScreen);
    // A window that refuses position and/or size writes keeps that part of
    // its frame and makes setFrame report false.
    void setAcceptsMoves(WindowId window, bool accepts);
    void setAcceptsResizes(WindowId window, bool accepts);
    // A window that sizes in whole steps (a terminal in character cells)
    // takes the largest multiple of `step` not above each written size.
    void setSizeStep(WindowId window, QSizeF step);
    // An unreadable frame (frame() yields none), as for a window that vanished.
    void setFrameReadable(WindowId window, bool readable);
    // Number of setFrame calls that reached `window`.
    int frameWrites(WindowId window) const;
    // While held, setFrame only queues its write (one per window: a newer one
    // completes the older with false), as a window manager that takes its
    // time; finishFrameWrites carries the queued ones out. Off by default:
    // writes complete before setFrame returns.
    void setHoldsFrameWrites(bool holds) { m_holdsWrites = holds; }
    void finishFrameWrites();
    int heldFrameWrites() const { return int(m_heldWrites.size()); }

    void setScreens(const QList<ScreenInfo> &screens) { m_screens = screens; }
    void setPointer(QPointF pointer) { m_pointer = pointer; }
    void setComposited(bool composited) { m_composited = composited; }
    // Whether listen() succeeds; true by default.
    void setMouseMonitorAvailable(bool available) { m_mouseAvailable = available; }
    // Number of successful listen() calls.
    int mouseListeners() const { return int(m_mouseListeners.size()); }
    // Left button down/up anywhere on the desktop; reach every listener.
    void pressLeft();
    void releaseLeft();

    // --- Accessibility ---------------------------------------------------
    bool isTrusted() const override { return m_trusted; }
    bool requestTrust() override;
    void openPrivacySettings() override { ++m_privacyOpenings; }
    std::optional<WindowId> focusedWindow(const RunningApp &app) const override;
    std::optional<Rect> frame(WindowId window) const override;
    void setFrame(
        WindowId window, const Rect &frame, const QObject *context, std::function<void(bool moved)> done) override;
    bool isFullScreen(WindowId window) const override;
    quint64 windowHash(WindowId window) const override;

    // --- Workspace -------------------------------------------------------
    qint64 ownPid() const override { return m_ownApp.pid; }
    std::optional<RunningApp> frontmostApplication() const override { return m_frontmost; }
    std::optional<RunningApp> menuBarOwningApplication() const override { return m_menuBarOwner; }
    QList<RunningApp> runningApplications() const override;

    // --- Screens ---------------------------------------------------------
    QList<ScreenInfo> screens() const override { return m_screens; }
    QPointF pointerLocation() const override { return m_pointer; }
    bool composited() const override { return m_composited; }

    // --- MouseMonitor ----------------------------------------------------
    bool listen(std::function<void()> onLeftDown, std::function<void()> onLeftUp) override;

private:
    struct Window {
        RunningApp owner;
        Rect frame;
        bool fullScreen = false;
        bool acceptsMoves = true;
        bool acceptsResizes = true;
        QSizeF sizeStep = {}; // sizes are free while not positive
        bool frameReadable = true;
        int writes = 0;
    };

    struct HeldWrite {
        WindowId window;
        Rect frame;
        QPointer<const QObject> context;
        std::function<void(bool)> done;
    };

    Window &window(WindowId id);
    const Window &window(WindowId id) const;
    bool write(WindowId window, const Rect &frame);
    static void complete(const HeldWrite &write, bool moved);

    RunningApp m_ownApp;
    QHash<WindowId, Window> m_windows;
    WindowId m_nextWindow = 1;
    // Application pid → its focused window.
    QHash<qint64, WindowId> m_focused;
    QList<RunningApp> m_apps;
    std::optional<RunningApp> m_frontmost;
    std::optional<RunningApp> m_menuBarOwner;
    bool m_trusted = true;
    bool m_grantsTrust = false;
    int m_trustRequests = 0;
    int m_privacyOpenings = 0;
    bool m_holdsWrites = false;
    QList<HeldWrite> m_heldWrites;

    QList<ScreenInfo> m_screens;
    QPointF m_pointer;
    bool m_composited = true;
    bool m_mouseAvailable = true;
    QList<std::pair<std::function<void()>, std::function<void()>>> m_mouseListeners;
};

} // namespace tessary

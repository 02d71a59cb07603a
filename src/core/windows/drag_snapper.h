#pragma once

#include "core/platform/accessibility.h"
#include "core/platform/mouse_monitor.h"
#include "core/platform/screens.h"
#include "core/platform/workspace.h"
#include "core/windows/ax.h"
#include "core/windows/layout.h"
#include "core/windows/rect.h"

#include <QObject>
#include <QPointF>
#include <QString>

#include <chrono>
#include <optional>

namespace tessary {

class WindowManager;

// Snaps a window the user drags with the left button and drops with the
// pointer at a screen edge (half, or maximize at the top) or corner (quarter).
// The window under the user's hand is captured shortly after the button goes
// down; on release it must still be in front, have moved by more than 10 points
// and kept its size within 4 points (otherwise it was resized). Points are
// scaled by the scale factor of the display under the pointer. The snap comes
// a moment after the release, and only if the window manager has not moved
// the window meanwhile. Every unmet condition ends the press silently. The ports and the manager must outlive
// this object. Main thread only.
class DragSnapper : public QObject {
    Q_OBJECT

public:
    // How long after the button goes down the front window is read, so that
    // the click has activated the window being dragged.
    static constexpr std::chrono::milliseconds captureDelay{80};
    // How long after the release a snap waits for the window manager's own
    // tiling of the drop, which it then leaves alone.
    static constexpr std::chrono::milliseconds windowManagerGrace{120};

    DragSnapper(WindowManager &manager, Accessibility &accessibility, Workspace &workspace, Screens &screens,
        MouseMonitor &mouse, QObject *parent = nullptr);

    // Installs the mouse monitor; later calls do nothing once it is installed.
    void start();

    // While disabled, presses are neither captured nor snapped.
    bool enabled() const { return m_enabled; }
    void setEnabled(bool enabled) { m_enabled = enabled; }

    // The layout for a drop with the pointer at `pointer` on a display whose
    // whole frame is `screen` (desktop coordinates) and whose points are
    // `scale` frame units; none away from the edges and along the bottom edge
    // between the corners.
    static std::optional<Layout> zone(QPointF pointer, const Rect &screen, double scale = 1);

private:
    void onMouseDown();
    void onMouseUp();
    void capture(quint64 generation);
    struct Drop {
        Layout layout;
        AX::FrontWindow front;
        Rect frame;
        QString startKey;
        Rect startFrame;
    };
    void snapDroppedWindow();
    void apply(const Drop &drop);
    bool wasDragged(const Rect &now, double scale) const;
    void reset();

    WindowManager &m_manager;
    Accessibility &m_accessibility;
    Workspace &m_workspace;
    Screens &m_screens;
    MouseMonitor &m_mouse;
    bool m_started = false;
    bool m_enabled = true;
    // Identifies the current press; a capture scheduled for an older one is dropped.
    quint64 m_generation = 0;
    std::optional<QString> m_startKey;
    // Accessibility coordinates, read when the press was captured.
    std::optional<Rect> m_startFrame;
};

} // namespace tessary

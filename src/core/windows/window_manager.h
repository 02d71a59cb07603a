#pragma once

#include "core/platform/accessibility.h"
#include "core/platform/screens.h"
#include "core/platform/workspace.h"
#include "core/windows/layout.h"
#include "core/windows/rect.h"

#include <QHash>
#include <QString>

#include <optional>
#include <variant>

namespace tessary {

// Moves and resizes other applications' windows: layouts with cycling, display
// moves and restore to the frame a window had before its first snap. One
// instance, owned by the application; the ports must outlive it. Main thread only.
class WindowManager {
public:
    enum class Failure {
        noPermission,
        noWindow,
        fullScreen,
        cannotMove,
    };
    // The fixed text the user sees for `failure`.
    static QString errorDescription(Failure failure);

    // Either the layout that was applied (after cycling) or the failure.
    class ApplyResult {
    public:
        ApplyResult(Layout applied)
            : m_value(applied)
        {
        }
        ApplyResult(Failure failure)
            : m_value(failure)
        {
        }

        bool succeeded() const { return std::holds_alternative<Layout>(m_value); }
        std::optional<Layout> layout() const;
        std::optional<Failure> failure() const;

        friend bool operator==(const ApplyResult &, const ApplyResult &) = default;

    private:
        std::variant<Layout, Failure> m_value;
    };

    WindowManager(Accessibility &accessibility, Workspace &workspace, Screens &screens);

    // Points kept free around a snapped window; 0 until the settings set it.
    double gap() const { return m_gap; }
    void setGap(double gap) { m_gap = gap; }

    // Snaps `window` of process `pid`; the caller has checked the trust and
    // found the window. Checks run in a fixed order: full-screen, unreadable
    // frame, no display. The window's first pre-snap frame is recorded before
    // the move and kept even when the move then fails.
    ApplyResult apply(Layout layout, WindowId window, qint64 pid);
    // Puts the front window back where it was before its first snap and
    // forgets that frame. A window never snapped is left alone (success).
    // Returns none on success.
    std::optional<Failure> restore();
    // Carries the front window to the next (or previous) display, wrapping
    // around, keeping its relative size and place. Full-screen windows report
    // `cannotMove` here. Returns none on success.
    std::optional<Failure> moveToDisplay(bool next);
    // Records `frame` (accessibility coordinates) as the window's pre-snap
    // frame unless one is already recorded.
    void remember(const QString &key, const Rect &frame);

private:
    Accessibility &m_accessibility;
    Workspace &m_workspace;
    Screens &m_screens;
    double m_gap = 0;
    // Window key → frame before its first snap, accessibility coordinates.
    QHash<QString, Rect> m_originals;
};

} // namespace tessary

#pragma once

#include "core/platform/accessibility.h"
#include "core/platform/screens.h"
#include "core/platform/workspace.h"
#include "core/windows/layout.h"
#include "core/windows/rect.h"

#include <QHash>
#include <QObject>
#include <QString>

#include <functional>
#include <optional>
#include <variant>

namespace tessary {

// Moves and resizes other applications' windows: layouts with cycling, display
// moves and restore to the frame a window had before its first snap. Every
// operation completes later, when the window has taken its new frame (or
// refused it), through its callback. A newer operation on a window whose move
// is still under way takes over from it: it starts from the frame still being
// written, and the older one's callback never runs. One instance, owned by the
// application; the ports must outlive it. Main thread only.
class WindowManager : public QObject {
    Q_OBJECT

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

    using ApplyDone = std::function<void(ApplyResult)>;
    // None on success.
    using Done = std::function<void(std::optional<Failure>)>;

    WindowManager(Accessibility &accessibility, Workspace &workspace, Screens &screens);

    // Points kept free around a snapped window (scaled by the display's
    // scale factor); 0 until the settings set it.
    double gap() const { return m_gap; }
    void setGap(double gap) { m_gap = gap; }

    // Snaps `window` of process `pid`; the caller has checked the trust and
    // found the window. Checks run in a fixed order: full-screen, unreadable
    // frame, no display. The window's first pre-snap frame is recorded before
    // the move and kept even when the move then fails. A window still where
    // it settled after the previous snap cycles as if it sat exactly on that
    // snap's target, so one that sizes in steps (a terminal's character
    // cells) and falls short of it cycles all the same. A failed check
    // completes before apply returns.
    void apply(Layout layout, WindowId window, qint64 pid, ApplyDone done);
    // Puts the front window back where it was before its first snap and
    // forgets that frame. A window never snapped is left alone (success).
    void restore(Done done);
    // Carries the front window to the next (or previous) display, wrapping
    // around, keeping its relative size and place. Full-screen windows report
    // `cannotMove` here.
    void moveToDisplay(bool next, Done done);
    // Records `frame` (accessibility coordinates) as the window's pre-snap
    // frame unless one is already recorded.
    void remember(const QString &key, const Rect &frame);

private:
    // A successful write to a window and the frame the window then took, both
    // in accessibility coordinates.
    struct Snap {
        Rect written;
        Rect settled;
    };

    // The frame cycling reads for a window now at `frame`: the frame being
    // written to it while a move is under way; what was last written to it
    // while it still sits where it settled then (within `tolerance`); else
    // `frame` itself. Any later move by the user thus starts the cycle afresh.
    Rect cyclingFrame(const QString &key, const Rect &frame, double tolerance) const;
    // The frame being written to the window when a move is under way, else
    // the one it has now.
    std::optional<Rect> currentFrame(const QString &key, WindowId window) const;
    // Writes `frame` to `window` through the port; `finished` runs with the
    // outcome unless a newer write to the same window began meanwhile.
    void write(const QString &key, WindowId window, const Rect &frame, std::function<void(bool moved)> finished);

    Accessibility &m_accessibility;
    Workspace &m_workspace;
    Screens &m_screens;
    double m_gap = 0;
    // Window key → frame before its first snap, accessibility coordinates.
    QHash<QString, Rect> m_originals;
    // Window key → its last snap by apply.
    QHash<QString, Snap> m_snaps;
    struct Write {
        quint64 serial;
        Rect frame;
    };
    // Window key → the write under way.
    QHash<QString, Write> m_writing;
    quint64 m_lastWrite = 0;
};

} // namespace tessary

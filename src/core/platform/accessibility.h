#pragma once

#include "core/platform/running_app.h"
#include "core/windows/rect.h"

#include <QObject>
#include <QtGlobal>

#include <functional>
#include <optional>

namespace tessary {

// Opaque handle of another application's top-level window (an X window id, or
// an index into the backend's table of accessibility elements).
using WindowId = quint64;

// Reads and writes other applications' window frames. Frames are in
// accessibility coordinates: origin top-left of the first display, y down, the
// frame the user sees (window-manager decorations included, client-side
// shadows excluded). Main thread only; every call but setFrame is synchronous.
class Accessibility {
public:
    virtual ~Accessibility() = default;

    // Whether this process may move other windows (always true on X11).
    virtual bool isTrusted() const = 0;
    // Asks the user to grant trust; returns the trust after asking.
    virtual bool requestTrust() = 0;
    virtual void openPrivacySettings() = 0;

    // The focused window of `app`, or none when it has no window to move.
    virtual std::optional<WindowId> focusedWindow(const RunningApp &app) const = 0;
    virtual std::optional<Rect> frame(WindowId window) const = 0;
    // Starts moving and resizing `window` to `frame`. `done` runs once, on the
    // main thread, with false when the window is gone, refused, or a later
    // setFrame on the same window took over; not at all once `context` is
    // gone. It may run before setFrame returns.
    virtual void setFrame(
        WindowId window, const Rect &frame, const QObject *context, std::function<void(bool moved)> done)
        = 0;
    virtual bool isFullScreen(WindowId window) const = 0;
    // Stable for the window's life and distinct between live windows of a process.
    virtual quint64 windowHash(WindowId window) const = 0;
};

} // namespace tessary

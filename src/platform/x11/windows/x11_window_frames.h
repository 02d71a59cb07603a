#pragma once

#include "platform/x11/windows/size_hints.h"
#include "platform/x11/x11_connection.h"

#include <QRect>

#include <chrono>
#include <optional>

namespace tessary {

// Reads and writes the frame the user sees of a managed client window, in
// root coordinates: the client plus the window manager's decorations
// (_NET_FRAME_EXTENTS) less a client-side shadow (_GTK_FRAME_EXTENTS).
// Writes go through the window manager and wait, bounded, until it has acted,
// so a write that returns has been carried out. Main thread only.
class X11WindowFrames {
public:
    // How long a write waits for the window manager before it counts as refused.
    static constexpr std::chrono::milliseconds settleTimeout{300};

    explicit X11WindowFrames(X11Connection &x11);

    std::optional<QRect> visibleFrame(xcb_window_t window) const;
    // Un-maximizes the window (either direction, which is also how side-tiled
    // windows show), then moves it so that its visible frame lands on
    // `target`, as exactly as its size increments allow. The real frame is
    // measured afterwards and the request sent once more when the decorations
    // changed meanwhile. False when the window is gone or did not move at all.
    bool setVisibleFrame(xcb_window_t window, const QRect &target);

private:
    struct Extents {
        int left = 0, right = 0, top = 0, bottom = 0;
        friend bool operator==(const Extents &, const Extents &) = default;
    };
    struct Placement {
        QRect client; // inside the border
        int border = 0;
        Extents decorations;
        Extents shadow;
        QRect visible() const;
    };
    // Outer corner of the decorated window and the client size, as
    // _NET_MOVERESIZE_WINDOW takes them.
    struct Request {
        QRect geometry;
        QRect expectedVisible;
        friend bool operator==(const Request &a, const Request &b) { return a.geometry == b.geometry; }
    };

    std::optional<Placement> measure(xcb_window_t window) const;
    Extents extents(xcb_window_t window, const char *property) const;
    SizeHints sizeHints(xcb_window_t window) const;
    Request request(const Placement &now, const SizeHints &hints, const QRect &target) const;
    bool unmaximize(xcb_window_t window);
    void send(xcb_window_t window, const Request &request);
    std::optional<Placement> settle(xcb_window_t window, const QRect &before, const QRect &expected) const;
    void sendClientMessage(xcb_window_t window, xcb_atom_t type, const uint32_t (&data)[5]);
    bool supports(const char *hint) const;

    X11Connection &m_x11;
};

} // namespace tessary

#pragma once

#include "platform/x11/windows/size_hints.h"
#include "platform/x11/x11_connection.h"

#include <QRect>

#include <optional>

namespace tessary {

// Reads the frame the user sees of a managed client window, in root
// coordinates: the client plus the window manager's decorations
// (_NET_FRAME_EXTENTS) less a client-side shadow (_GTK_FRAME_EXTENTS); and
// sends the requests that change it. Nothing here waits for the window
// manager: X11FrameMove does. Main thread only.
class X11WindowFrames {
public:
    struct Extents {
        int left = 0, right = 0, top = 0, bottom = 0;
        friend bool operator==(const Extents &, const Extents &) = default;
    };
    struct Placement {
        QRect client; // inside the border
        int border = 0;
        Extents decorations;
        Extents shadow;
        // Maximized in either direction, which is also how side-tiled windows show.
        bool maximized = false;
        QRect visible() const;
    };
    // Outer corner of the decorated window and the client size, as
    // _NET_MOVERESIZE_WINDOW takes them, and the visible frame the window
    // will have if the window manager honours its size hints.
    struct Request {
        QRect geometry;
        QRect expectedVisible;
        friend bool operator==(const Request &a, const Request &b) { return a.geometry == b.geometry; }
    };

    explicit X11WindowFrames(X11Connection &x11);

    X11Connection &x11() const { return m_x11; }

    std::optional<QRect> visibleFrame(xcb_window_t window) const;
    // Geometry, decorations, shadow and state in one round trip; none when
    // the window is gone.
    std::optional<Placement> measure(xcb_window_t window) const;
    SizeHints sizeHints(xcb_window_t window) const;
    // The ancestor of `window` that is a child of the root: the window
    // manager's frame, or `window` itself when it is not reparented.
    xcb_window_t topLevel(xcb_window_t window) const;

    // What to ask for so that a window placed as `now` shows `target`, as
    // exactly as its size increments allow.
    static Request request(const Placement &now, const SizeHints &hints, const QRect &target);
    void send(xcb_window_t window, const Request &request);
    void sendUnmaximize(xcb_window_t window);

private:
    void sendClientMessage(xcb_window_t window, xcb_atom_t type, const uint32_t (&data)[5]);
    bool supports(const char *hint) const;

    X11Connection &m_x11;
};

} // namespace tessary

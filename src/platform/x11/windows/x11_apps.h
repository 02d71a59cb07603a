#pragma once

#include "core/platform/running_app.h"
#include "platform/x11/windows/desktop_entry_ids.h"
#include "platform/x11/windows/x11_clients.h"

#include <optional>

namespace tessary {

// The application a client window belongs to: its process, its desktop-entry
// id when one matches the window class (else the class itself) and a name.
class X11Apps {
public:
    explicit X11Apps(X11Connection &x11);

    // None for XCB_WINDOW_NONE.
    std::optional<RunningApp> appOf(xcb_window_t window) const;
    const X11Clients &clients() const { return m_clients; }

private:
    X11Clients m_clients;
    mutable DesktopEntryIds m_entries;
};

} // namespace tessary

#pragma once

#include "platform/x11/x11_connection.h"

#include <QProcess>
#include <QRect>
#include <QSize>
#include <QStringList>

#include <array>
#include <functional>
#include <memory>
#include <vector>

namespace tessary {

// The test session seen from a test: starts real clients, measures windows
// the way the window manager placed them (independently of the backends under
// test) and drives xdotool. Clients are killed when the object goes.
class TestDesktop {
public:
    TestDesktop();
    ~TestDesktop();

    X11Connection &x11() { return *m_x11; }

    struct Client {
        xcb_window_t window = XCB_WINDOW_NONE;
        qint64 pid = 0;
    };
    // Starts `program` and waits until its window is managed and active;
    // window XCB_WINDOW_NONE when that does not happen in time.
    Client launch(const QString &program, const QStringList &arguments = {});

    // The frame the user sees around `client`, in root coordinates: the
    // client grown by the frame extents the window manager publishes (mutter's
    // frame window also holds invisible resize borders), else the root's child
    // that holds it.
    QRect managedFrame(xcb_window_t client) const;
    // The client window itself, in root coordinates.
    QRect clientGeometry(xcb_window_t client) const;
    // The client's resize increments (1 × 1 when it sets none).
    QSize sizeIncrement(xcb_window_t client) const;
    xcb_window_t activeWindow() const;
    bool hasState(xcb_window_t client, const char *state) const;
    // Asks the window manager to add or remove a _NET_WM_STATE, as a pager would.
    void changeState(xcb_window_t client, bool add, const char *state);
    // Asks the window manager to activate `client`, as a pager would.
    void activate(xcb_window_t client);

    // Runs xdotool with `arguments` (on the test display) and waits for it.
    bool xdotool(const QStringList &arguments) { return run(QStringLiteral("xdotool"), arguments); }
    // Runs `program` (on the test display) and waits for it; true when it succeeded.
    static bool run(const QString &program, const QStringList &arguments);
    // Processes events until `condition` holds or `timeoutMs` passes.
    static bool waitFor(const std::function<bool()> &condition, int timeoutMs = 3000);

private:
    void sendToWindowManager(xcb_window_t client, const char *type, std::array<uint32_t, 5> data);

    X11Connection *m_x11;
    std::vector<std::unique_ptr<QProcess>> m_processes;
};

} // namespace tessary

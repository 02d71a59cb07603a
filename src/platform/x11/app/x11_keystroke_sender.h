#pragma once

#include "core/platform/keystroke_sender.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <xcb/xcb.h>

namespace tessary {

class X11Connection;

// KeystrokeSender over XTest. Re-activates the remembered window through the
// window manager and waits until it really has the input focus (the active
// window property can change before the focus does, and an activation is now
// and then ignored, so it is repeated), then releases held modifiers and posts
// the window's paste keystroke. Main thread only.
class X11KeystrokeSender final : public QObject, public KeystrokeSender {
    Q_OBJECT

public:
    explicit X11KeystrokeSender(X11Connection &x11, QObject *parent = nullptr);
    ~X11KeystrokeSender() override;

    void rememberTarget() override;
    void sendPaste(std::function<void(bool posted)> done) override;

    // How long a paste waits for its target to take the focus before giving up.
    static constexpr int focusTimeoutMs = 2000;

private:
    void onPoll();
    void finish(bool posted);
    void deliver();

    xcb_window_t activeWindow() const;
    bool isOwnWindow(xcb_window_t window) const;
    bool hasInputFocus(xcb_window_t window) const;
    void activate(xcb_window_t window);
    void releaseHeldModifiers();

    X11Connection &m_x11;
    xcb_window_t m_remembered = XCB_WINDOW_NONE;
    xcb_window_t m_target = XCB_WINDOW_NONE;
    QTimer m_poll;
    QElapsedTimer m_waiting;
    qint64 m_lastActivationMs = 0;
    std::function<void(bool)> m_done;
};

} // namespace tessary

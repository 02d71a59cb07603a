#pragma once

#include "core/platform/panel_keyboard.h"

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QTimer>

#include <xcb/xcb.h>

#include <optional>

namespace tessary {

class X11Connection;
class X11KeyboardFreeze;

// PanelKeyboard for panels that bypass the window manager (override-redirect
// windows): no window manager's focus-stealing prevention stands between the
// panel and the keyboard, because the panel sets the input focus itself, as
// soon as the server reports it mapped, with the time of the hot key press
// that opened it. That press froze the keyboard (X11KeyboardFreeze); the
// freeze is let go only after the focus request, so keys typed right after
// the hot key wait in the server and then reach the panel in order. Needs the
// application object; main thread only.
class X11PanelKeyboard final : public QObject, public PanelKeyboard, private QAbstractNativeEventFilter {
    Q_OBJECT

public:
    X11PanelKeyboard(X11Connection &x11, X11KeyboardFreeze &freeze, QObject *parent = nullptr);
    ~X11PanelKeyboard() override;

    void focusPanel(quintptr window) override;
    void panelHiding(quintptr window) override;

    // How long a panel may take to be mapped before the keyboard is let go anyway.
    static constexpr int mapTimeoutMs = 500;

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void giveFocus();
    void letKeyboardGo();
    xcb_window_t inputFocus() const;

    X11Connection &m_x11;
    X11KeyboardFreeze &m_freeze;
    // The panel waiting to be mapped, and the press time it takes the focus with.
    xcb_window_t m_pending = XCB_WINDOW_NONE;
    xcb_timestamp_t m_time = XCB_CURRENT_TIME;
    bool m_holdsFreeze = false;
    // Who had the keyboard before the panel.
    xcb_window_t m_previous = XCB_WINDOW_NONE;
    QTimer m_mapTimeout;
};

} // namespace tessary

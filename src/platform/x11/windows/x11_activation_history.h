#pragma once

#include "platform/x11/x11_connection.h"

#include <QAbstractNativeEventFilter>
#include <QList>

namespace tessary {

// The windows the window manager made active (_NET_ACTIVE_WINDOW), most
// recent first, from the moment the object exists: which window of an
// application the user worked in last, whatever the stacking order says now.
// Needs the application object; main thread only.
class X11ActivationHistory final : private QAbstractNativeEventFilter {
public:
    explicit X11ActivationHistory(X11Connection &x11);
    ~X11ActivationHistory() override;

    X11ActivationHistory(const X11ActivationHistory &) = delete;
    X11ActivationHistory &operator=(const X11ActivationHistory &) = delete;

    // Most recently active first; windows may since have gone.
    const QList<xcb_window_t> &recentFirst() const { return m_recent; }

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void recordActiveWindow();

    X11Connection &m_x11;
    xcb_atom_t m_activeWindowAtom;
    QList<xcb_window_t> m_recent;
};

} // namespace tessary

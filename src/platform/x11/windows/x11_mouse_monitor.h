#pragma once

#include "core/platform/mouse_monitor.h"
#include "platform/x11/x11_connection.h"

#include <QAbstractNativeEventFilter>

#include <vector>

namespace tessary {

// Primary button presses and releases anywhere on the screen, from XInput 2.2
// raw events selected on the root window: nothing is grabbed, and the events
// keep coming while the window manager holds the pointer for a drag. Raw
// events carry the physical button, so the pointer's button map (a
// left-handed one swaps 1 and 3) tells which one acts as button 1; it is read
// again when it changes. The callbacks run inside Qt's event dispatch. Needs
// the application object.
class X11MouseMonitor final : public MouseMonitor, private QAbstractNativeEventFilter {
public:
    explicit X11MouseMonitor(X11Connection &x11);
    ~X11MouseMonitor() override;

    X11MouseMonitor(const X11MouseMonitor &) = delete;
    X11MouseMonitor &operator=(const X11MouseMonitor &) = delete;

    // False when the server lacks XInput 2.2.
    bool listen(std::function<void()> onLeftDown, std::function<void()> onLeftUp) override;

private:
    struct Listener {
        std::function<void()> onLeftDown;
        std::function<void()> onLeftUp;
    };

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    bool install();
    bool selectRawButtons();
    // The physical button the pointer's map turns into button 1.
    uint8_t readPrimaryButton() const;

    X11Connection &m_x11;
    bool m_installed = false;
    uint8_t m_opcode = 0;
    uint8_t m_primaryButton = 1;
    std::vector<Listener> m_listeners;
};

} // namespace tessary

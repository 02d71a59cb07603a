#pragma once

#include "core/windows/screen_info.h"
#include "ui/floating_panel.h"

#include <QList>
#include <QMetaObject>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QRect>

#include <functional>

namespace tessary {

class KeystrokeSender;
class MouseMonitor;
class PanelKeyboard;
class Screens;

// Owns at most one keyboard-taking FloatingPanel at a time. A panel is built
// on every show and dropped on hide; it hides itself when it loses the
// keyboard, on Escape, or on a press of the primary button outside it. Before
// a panel shows, the window the user works in is remembered as the target of
// a later paste. Main thread only.
class PanelController : public QObject {
    Q_OBJECT

public:
    // `keyboard` may be null where the platform's own activation is enough
    // (tests on the offscreen platform), `mouse` where a click elsewhere always
    // takes the keyboard. All must outlive the controller.
    struct Ports {
        Screens &screens;
        KeystrokeSender &keystrokes;
        PanelKeyboard *keyboard = nullptr;
        MouseMonitor *mouse = nullptr;
    };

    // One display in Qt's global coordinates (y down).
    struct Screen {
        QRect frame;
        QRect available;
    };

    explicit PanelController(Ports ports, QObject *parent = nullptr);
    ~PanelController() override;

    // Replaces any shown panel with a new one holding `content` (which it
    // takes), `width` wide and `height` high, on the screen with the pointer,
    // and gives it the keyboard.
    void show(QWidget *content, int width, int height);
    void hide();
    // Resizes the shown panel to `height` keeping its top edge where it is;
    // a change of half a point or less is ignored.
    void setHeight(double height);

    FloatingPanel *panel() const { return m_panel; }
    bool isVisible() const { return m_panel && m_panel->isVisible(); }

    // Disconnected when the shown panel hides (e.g. a results subscription).
    void addSubscription(const QMetaObject::Connection &connection);

    // Runs after a panel has been hidden.
    std::function<void()> onHide;

    // The panel's frame: centred on the available area of the first screen
    // whose frame contains `pointer` (else `primary`, else the first), its top
    // edge a fifth of that area's height below the area's top.
    static QRect placement(const QList<Screen> &screens, int primary, QPoint pointer, QSize size);
    // Displays in desktop coordinates (the first one primary) in Qt's global
    // coordinates, where the primary display's top-left is `primaryOrigin`.
    static QList<Screen> toGlobal(const QList<ScreenInfo> &screens, QPoint primaryOrigin);
    static QPoint toGlobal(QPointF pointer, const QList<ScreenInfo> &screens, QPoint primaryOrigin);

private:
    void hideOnPressesOutside();

    Ports m_ports;
    bool m_watchingPresses = false;
    QPointer<FloatingPanel> m_panel;
    QList<QMetaObject::Connection> m_subscriptions;
};

} // namespace tessary

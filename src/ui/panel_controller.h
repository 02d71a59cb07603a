#pragma once

#include "ui/floating_panel.h"

#include <QList>
#include <QMetaObject>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QRect>

#include <functional>

namespace tessary {

// Owns at most one keyboard-taking FloatingPanel at a time. A panel is built
// on every show and dropped on hide; it hides itself when it loses the
// keyboard or on Escape. Main thread only.
class PanelController : public QObject {
    Q_OBJECT

public:
    // One display in Qt's global coordinates (y down).
    struct Screen {
        QRect frame;
        QRect available;
    };

    explicit PanelController(QObject *parent = nullptr);
    ~PanelController() override;

    // Replaces any shown panel with a new one holding `content` (which it
    // takes), `width` wide and `height` high, on the screen with the pointer.
    void show(QWidget *content, int width, int height);
    void hide();

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

private:
    QPointer<FloatingPanel> m_panel;
    QList<QMetaObject::Connection> m_subscriptions;
};

} // namespace tessary

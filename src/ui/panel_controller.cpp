#include "ui/panel_controller.h"

#include "core/platform/keystroke_sender.h"
#include "core/platform/mouse_monitor.h"
#include "core/platform/panel_keyboard.h"
#include "core/platform/screens.h"
#include "core/windows/geometry.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>

#include <cmath>

namespace tessary {

PanelController::PanelController(Ports ports, QObject *parent)
    : QObject(parent)
    , m_ports(ports)
{
}

PanelController::~PanelController()
{
    if (m_panel) {
        m_panel->onResignKey = nullptr;
        delete m_panel.data();
    }
}

QRect PanelController::placement(const QList<Screen> &screens, int primary, QPoint pointer, QSize size)
{
    if (screens.isEmpty())
        return QRect(QPoint(0, 0), size);
    const Screen *chosen = nullptr;
    for (const Screen &screen : screens) {
        if (screen.frame.contains(pointer)) {
            chosen = &screen;
            break;
        }
    }
    if (!chosen)
        chosen = &screens[primary >= 0 && primary < screens.size() ? primary : 0];
    const QRectF area = chosen->available.toRectF();
    const double x = area.center().x() - size.width() / 2.0;
    const double top = area.top() + 0.2 * area.height();
    return QRect(QPoint(int(std::lround(x)), int(std::lround(top))), size);
}

QList<PanelController::Screen> PanelController::toGlobal(const QList<ScreenInfo> &screens, QPoint primaryOrigin)
{
    QList<Screen> result;
    if (screens.isEmpty())
        return result;
    const double primaryHeight = screens.first().frame.absHeight();
    const auto global = [&](const Rect &desktop) {
        const Rect flipped = Geometry::flip(desktop, primaryHeight);
        return QRectF(flipped.x, flipped.y, flipped.width, flipped.height).toRect().translated(primaryOrigin);
    };
    for (const ScreenInfo &screen : screens)
        result.append({global(screen.frame), global(screen.visible)});
    return result;
}

QPoint PanelController::toGlobal(QPointF pointer, const QList<ScreenInfo> &screens, QPoint primaryOrigin)
{
    const double primaryHeight = screens.isEmpty() ? 0 : screens.first().frame.absHeight();
    return QPointF(pointer.x(), primaryHeight - pointer.y()).toPoint() + primaryOrigin;
}

void PanelController::show(QWidget *content, int width, int height)
{
    hide();
    m_ports.keystrokes.rememberTarget();
    auto *panel = new FloatingPanel(FloatingPanel::Input::keyboard);
    auto *layout = new QVBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSizeConstraint(QLayout::SetNoConstraint);
    content->setFixedWidth(width);
    layout->addWidget(content, 0, Qt::AlignHCenter);

    panel->onResignKey = [self = QPointer<PanelController>(this)] {
        if (self)
            self->hide();
    };

    // The usable areas come from the platform (per-display panels and docks),
    // the primary display's place in Qt's coordinates from Qt.
    const QScreen *primary = QGuiApplication::primaryScreen();
    const QPoint origin = primary ? primary->geometry().topLeft() : QPoint();
    const QList<ScreenInfo> screens = m_ports.screens.screens();
    const QPoint pointer = toGlobal(m_ports.screens.pointerLocation(), screens, origin);
    panel->setGeometry(placement(toGlobal(screens, origin), 0, pointer, QSize(width, height)));
    panel->cutToRoundedShape(m_ports.screens.composited() ? 0 : FloatingPanel::cornerRadius);
    m_panel = panel;
    hideOnPressesOutside();
    panel->show();
    // Reparenting into the panel dropped whatever focus the content had chosen.
    content->setFocus(Qt::ActiveWindowFocusReason);
    if (m_ports.keyboard)
        m_ports.keyboard->focusPanel(panel->winId());
    panel->raise();
    panel->activateWindow();
}

void PanelController::hideOnPressesOutside()
{
    // A click on the bare desktop moves no focus under most X11 window
    // managers, so losing the keyboard alone would leave the panel open.
    if (m_watchingPresses || !m_ports.mouse)
        return;
    m_watchingPresses = m_ports.mouse->listen(
        [self = QPointer<PanelController>(this)] {
            if (self && self->m_panel && !self->m_panel->frameGeometry().contains(QCursor::pos()))
                self->hide();
        },
        {});
}

void PanelController::hide()
{
    if (!m_panel)
        return;
    FloatingPanel *panel = m_panel;
    m_panel = nullptr;
    panel->onResignKey = nullptr;
    if (m_ports.keyboard)
        m_ports.keyboard->panelHiding(panel->winId());
    panel->hide();
    panel->deleteLater();
    for (const QMetaObject::Connection &connection : std::as_const(m_subscriptions))
        disconnect(connection);
    m_subscriptions.clear();
    if (const auto callback = onHide)
        callback();
}

void PanelController::setHeight(double height)
{
    if (!m_panel || std::abs(m_panel->height() - height) <= 0.5)
        return;
    const QRect frame = m_panel->geometry();
    m_panel->setGeometry(frame.x(), frame.y(), frame.width(), int(std::lround(height)));
}

void PanelController::addSubscription(const QMetaObject::Connection &connection) { m_subscriptions.append(connection); }

} // namespace tessary

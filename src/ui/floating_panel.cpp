#include "ui/floating_panel.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QRegion>

namespace tessary {

FloatingPanel::FloatingPanel(Input input, QWidget *parent)
    : QWidget(parent)
{
    Qt::WindowFlags flags = Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::NoDropShadowWindowHint;
    if (input == Input::keyboard) {
        // Outside the window manager's care: it opens where it is placed, at
        // once, and takes the keyboard itself (PanelKeyboard) even where the
        // window manager would refuse a new window the focus.
        flags |= Qt::Tool | Qt::BypassWindowManagerHint;
    } else {
        // A tooltip-type window is left alone by the window manager: never focused, never decorated.
        flags |= Qt::ToolTip | Qt::WindowTransparentForInput | Qt::WindowDoesNotAcceptFocus;
        setAttribute(Qt::WA_ShowWithoutActivating);
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }
    setWindowFlags(flags);
    setAttribute(Qt::WA_TranslucentBackground);
}

bool FloatingPanel::event(QEvent *event)
{
    const bool handled = QWidget::event(event);
    if (event->type() == QEvent::WindowDeactivate)
        resignKey();
    return handled;
}

void FloatingPanel::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        resignKey();
        return;
    }
    QWidget::keyPressEvent(event);
}

void FloatingPanel::cutToRoundedShape(double radius)
{
    m_cutRadius = radius;
    updateMask();
}

void FloatingPanel::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    updateMask();
}

void FloatingPanel::paintEvent(QPaintEvent *)
{
    if (m_cutRadius > 0)
        QPainter(this).fillRect(rect(), palette().color(QPalette::Window));
}

void FloatingPanel::updateMask()
{
    if (m_cutRadius <= 0) {
        clearMask();
        return;
    }
    QPainterPath shape;
    shape.addRoundedRect(QRectF(rect()), m_cutRadius, m_cutRadius);
    setMask(QRegion(shape.toFillPolygon().toPolygon()));
}

void FloatingPanel::resignKey()
{
    // Copied first: the callback usually hides this panel and clears the member.
    if (const auto callback = onResignKey)
        callback();
}

} // namespace tessary

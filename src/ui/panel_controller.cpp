#include "ui/panel_controller.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>

#include <cmath>

namespace tessary {

namespace {

QList<PanelController::Screen> currentScreens(int &primary)
{
    QList<PanelController::Screen> screens;
    primary = -1;
    const QList<QScreen *> all = QGuiApplication::screens();
    for (int i = 0; i < all.size(); ++i) {
        screens.append({all[i]->geometry(), all[i]->availableGeometry()});
        if (all[i] == QGuiApplication::primaryScreen())
            primary = i;
    }
    return screens;
}

} // namespace

PanelController::PanelController(QObject *parent)
    : QObject(parent)
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

void PanelController::show(QWidget *content, int width, int height)
{
    hide();
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

    int primary = 0;
    const QList<Screen> screens = currentScreens(primary);
    panel->setGeometry(placement(screens, primary, QCursor::pos(), QSize(width, height)));
    m_panel = panel;
    panel->show();
    panel->raise();
    panel->activateWindow();
}

void PanelController::hide()
{
    if (!m_panel)
        return;
    FloatingPanel *panel = m_panel;
    m_panel = nullptr;
    panel->onResignKey = nullptr;
    panel->hide();
    panel->deleteLater();
    for (const QMetaObject::Connection &connection : std::as_const(m_subscriptions))
        disconnect(connection);
    m_subscriptions.clear();
    if (const auto callback = onHide)
        callback();
}

void PanelController::addSubscription(const QMetaObject::Connection &connection) { m_subscriptions.append(connection); }

} // namespace tessary

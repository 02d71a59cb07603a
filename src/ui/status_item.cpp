#include "ui/status_item.h"

#include "ui/app_icons.h"

#include <QCursor>
#include <QMenu>
#include <QSystemTrayIcon>
#include <QTimer>

namespace tessary {

StatusItem::StatusItem(QMenu *menu, QObject *parent)
    : QObject(parent)
    , m_menu(menu)
{
}

StatusItem::~StatusItem() = default;

void StatusItem::show()
{
    QTimer::singleShot(0, this, [this] {
        if (!m_icon) {
            m_icon = new QSystemTrayIcon(AppIcons::tray(), this);
            m_icon->setToolTip(QStringLiteral("Tessary"));
            m_icon->setContextMenu(m_menu);
            connect(m_icon, &QSystemTrayIcon::activated, this,
                [this](QSystemTrayIcon::ActivationReason reason) { onActivated(int(reason)); });
        }
        m_icon->show();
        Q_EMIT shown(QSystemTrayIcon::isSystemTrayAvailable());
    });
}

void StatusItem::onActivated(int reason)
{
    // Most trays open the context menu only on a right click; a left click opens it too.
    if (reason == QSystemTrayIcon::Trigger)
        m_menu->popup(QCursor::pos());
}

} // namespace tessary

#pragma once

#include <QObject>

class QMenu;
class QSystemTrayIcon;

namespace tessary {

// The tray presence: the "rectangle.split.2x2" symbol, described as "Tessary",
// opening `menu` on a click. Main thread only.
class StatusItem : public QObject {
    Q_OBJECT

public:
    explicit StatusItem(QMenu *menu, QObject *parent = nullptr);
    ~StatusItem() override;

    // Shows the icon; false when the desktop has no tray to show it in (the
    // icon then appears if a tray starts later, where the platform allows).
    bool show();

private:
    void onActivated(int reason);

    QMenu *m_menu;
    QSystemTrayIcon *m_icon;
};

} // namespace tessary

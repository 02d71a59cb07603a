#pragma once

#include <QObject>

class QMenu;
class QSystemTrayIcon;

namespace tessary {

// The tray presence: the Tessary tray symbol, described as "Tessary",
// opening `menu` on a click. Main thread only.
class StatusItem : public QObject {
    Q_OBJECT

public:
    explicit StatusItem(QMenu *menu, QObject *parent = nullptr);
    ~StatusItem() override;

    // Puts the icon in the tray on the next turn of the event loop: nothing
    // can appear before the loop runs, and drawing the symbol and reaching
    // the tray host then no longer delay start-up. Reports through shown().
    void show();

Q_SIGNALS:
    // False when the desktop has no tray (the icon then appears if a tray
    // starts later, where the platform allows).
    void shown(bool inTray);

private:
    void onActivated(int reason);

    QMenu *m_menu;
    QSystemTrayIcon *m_icon = nullptr;
};

} // namespace tessary

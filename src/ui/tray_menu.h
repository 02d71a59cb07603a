#pragma once

#include <QMenu>
#include <QObject>
#include <QString>

#include <memory>

namespace tessary {

// The status menu: "Move & Resize Window" (one item per window action),
// "Clipboard History…", "Launcher…", "Pause Clipboard History", "Settings…",
// "Quit Tessary". Items announce themselves through the signals; the menu
// does no work of its own. Main thread only.
class TrayMenu : public QObject {
    Q_OBJECT

public:
    explicit TrayMenu(QObject *parent = nullptr);
    ~TrayMenu() override;

    QMenu *menu() const { return m_menu.get(); }
    QAction *pauseItem() const { return m_pauseItem; }
    QAction *settingsItem() const { return m_settingsItem; }

    // Triggers the item with this title as shown (submenu items included),
    // as a click would; false when there is no such enabled item.
    bool trigger(const QString &title);

    // An item's title as the user reads it (menu mnemonics undone).
    static QString shownTitle(const QAction *item);

Q_SIGNALS:
    // An item whose represented object is this text: a hot action's raw value,
    // "clipboard" or "launcher".
    void representedObjectChosen(const QString &representedObject);
    void pauseChosen();
    void settingsChosen();
    void quitChosen();

private:
    QAction *addRepresented(QMenu *menu, const QString &title, const QString &representedObject);

    std::unique_ptr<QMenu> m_menu;
    QAction *m_pauseItem = nullptr;
    QAction *m_settingsItem = nullptr;
};

} // namespace tessary

#include "ui/tray_menu.h"

#include "core/app/hot_action.h"
#include "ui/symbol_icons.h"

namespace tessary {

namespace {

// Menus read "&" as a mnemonic marker; titles are shown literally.
QString literal(QString title) { return title.replace(QLatin1Char('&'), QLatin1String("&&")); }

QAction *findShown(const QMenu *menu, const QString &title)
{
    for (QAction *item : menu->actions()) {
        if (item->isSeparator())
            continue;
        if (TrayMenu::shownTitle(item) == title)
            return item;
        if (item->menu()) {
            if (QAction *inner = findShown(item->menu(), title))
                return inner;
        }
    }
    return nullptr;
}

} // namespace

TrayMenu::TrayMenu(QObject *parent)
    : QObject(parent)
    , m_menu(std::make_unique<QMenu>())
{
    QMenu *windows = m_menu->addMenu(literal(QStringLiteral("Move & Resize Window")));
    for (HotAction action : HotActions::windowActions)
        addRepresented(windows, title(action), rawValue(action));
    // Drawing the icons costs more than the rest of start-up's widgets: done when first needed.
    connect(windows, &QMenu::aboutToShow, this, [windows] {
        const QList<QAction *> items = windows->actions();
        for (qsizetype i = 0; i < items.size(); ++i) {
            if (items[i]->icon().isNull())
                items[i]->setIcon(SymbolIcons::icon(iconName(HotActions::windowActions[size_t(i)])));
        }
    });
    m_menu->addSeparator();
    addRepresented(m_menu.get(), QStringLiteral("Clipboard History…"), QStringLiteral("clipboard"));
    addRepresented(m_menu.get(), QStringLiteral("Launcher…"), QStringLiteral("launcher"));
    m_pauseItem = m_menu->addAction(QStringLiteral("Pause Clipboard History"));
    m_pauseItem->setCheckable(true);
    connect(m_pauseItem, &QAction::triggered, this, &TrayMenu::pauseChosen);
    m_menu->addSeparator();
    m_settingsItem = m_menu->addAction(QStringLiteral("Settings…"));
    m_settingsItem->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Comma));
    connect(m_settingsItem, &QAction::triggered, this, &TrayMenu::settingsChosen);
    QAction *quit = m_menu->addAction(QStringLiteral("Quit Tessary"));
    quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    connect(quit, &QAction::triggered, this, &TrayMenu::quitChosen);
}

TrayMenu::~TrayMenu() = default;

QAction *TrayMenu::addRepresented(QMenu *menu, const QString &title, const QString &representedObject)
{
    QAction *item = menu->addAction(literal(title));
    item->setData(representedObject);
    connect(item, &QAction::triggered, this, [this, item] {
        if (item->data().typeId() == QMetaType::QString)
            Q_EMIT representedObjectChosen(item->data().toString());
    });
    return item;
}

QString TrayMenu::shownTitle(const QAction *item)
{
    return item->text().replace(QLatin1String("&&"), QLatin1String("&"));
}

bool TrayMenu::trigger(const QString &title)
{
    QAction *item = findShown(m_menu.get(), title);
    if (!item || !item->isEnabled() || item->menu())
        return false;
    item->trigger();
    return true;
}

} // namespace tessary

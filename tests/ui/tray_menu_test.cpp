#include "ui/tray_menu.h"

#include "core/app/hot_action.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace tessary {
namespace {

QStringList shownTitles(const QMenu *menu)
{
    QStringList titles;
    for (const QAction *item : menu->actions())
        titles.append(item->isSeparator() ? QStringLiteral("—") : TrayMenu::shownTitle(item));
    return titles;
}

TEST(TrayMenu, topLevelItemsInOrder)
{
    TrayMenu tray;
    EXPECT_EQ(shownTitles(tray.menu()),
        (QStringList{QStringLiteral("Move & Resize Window"), QStringLiteral("—"), QStringLiteral("Clipboard History…"),
            QStringLiteral("Launcher…"), QStringLiteral("Pause Clipboard History"), QStringLiteral("—"),
            QStringLiteral("Settings…"), QStringLiteral("Quit Tessary")}));
    const QList<QAction *> items = tray.menu()->actions();
    EXPECT_EQ(items[6]->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Comma));
    EXPECT_EQ(items[7]->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Q));
    EXPECT_EQ(items[4], tray.pauseItem());
    EXPECT_TRUE(tray.pauseItem()->isCheckable());
    EXPECT_FALSE(tray.pauseItem()->isChecked());
}

TEST(TrayMenu, windowSubmenuListsTheEighteenWindowActions)
{
    TrayMenu tray;
    QMenu *windows = tray.menu()->actions().first()->menu();
    ASSERT_TRUE(windows);
    Q_EMIT windows->aboutToShow();
    const QList<QAction *> items = windows->actions();
    ASSERT_EQ(items.size(), 18);
    for (int i = 0; i < 18; ++i) {
        const HotAction action = HotActions::windowActions[size_t(i)];
        EXPECT_EQ(TrayMenu::shownTitle(items[i]), title(action));
        EXPECT_EQ(items[i]->data().toString(), rawValue(action));
        EXPECT_FALSE(items[i]->icon().isNull()) << i;
        EXPECT_TRUE(items[i]->shortcut().isEmpty()) << i;
    }
}

TEST(TrayMenu, eachItemAnnouncesItsChoice)
{
    const struct {
        QString title;
        QString represented; // empty: one of the plain signals
        const char *signal;
    } cases[] = {
        {QStringLiteral("Left half"), QStringLiteral("leftHalf"), nullptr},
        {QStringLiteral("Restore previous size"), QStringLiteral("restore"), nullptr},
        {QStringLiteral("Clipboard History…"), QStringLiteral("clipboard"), nullptr},
        {QStringLiteral("Launcher…"), QStringLiteral("launcher"), nullptr},
        {QStringLiteral("Pause Clipboard History"), QString(), SIGNAL(pauseChosen())},
        {QStringLiteral("Settings…"), QString(), SIGNAL(settingsChosen())},
        {QStringLiteral("Quit Tessary"), QString(), SIGNAL(quitChosen())},
    };
    for (const auto &c : cases) {
        TrayMenu tray;
        QSignalSpy represented(&tray, &TrayMenu::representedObjectChosen);
        std::unique_ptr<QSignalSpy> plain;
        if (c.signal)
            plain = std::make_unique<QSignalSpy>(&tray, c.signal);
        ASSERT_TRUE(tray.trigger(c.title)) << c.title.toStdString();
        if (c.signal) {
            EXPECT_EQ(plain->size(), 1) << c.title.toStdString();
            EXPECT_EQ(represented.size(), 0) << c.title.toStdString();
        } else {
            ASSERT_EQ(represented.size(), 1) << c.title.toStdString();
            EXPECT_EQ(represented.first().first().toString(), c.represented);
        }
    }
}

TEST(TrayMenu, onlyEnabledLeafItemsCanBeTriggered)
{
    TrayMenu tray;
    EXPECT_FALSE(tray.trigger(QStringLiteral("Move & Resize Window")));
    EXPECT_FALSE(tray.trigger(QStringLiteral("Move  Resize Window")));
    EXPECT_FALSE(tray.trigger(QStringLiteral("Nothing")));
    tray.settingsItem()->setEnabled(false);
    EXPECT_FALSE(tray.trigger(QStringLiteral("Settings…")));
}

} // namespace
} // namespace tessary

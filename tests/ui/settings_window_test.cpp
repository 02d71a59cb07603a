#include "core/clipboard/clipboard_store.h"
#include "core/settings/app_settings.h"
#include "core/settings/snippet_store.h"
#include "platform/fake/app/fake_key_positions.h"
#include "platform/fake/app/fake_login_item.h"
#include "platform/fake/clipboard/fake_pasteboard.h"
#include "platform/fake/memory_key_value_store.h"
#include "platform/fake/windows/fake_desktop.h"
#include "ui/settings/action_recorder.h"
#include "ui/settings/clipboard_tab.h"
#include "ui/settings/general_tab.h"
#include "ui/settings/launcher_tab.h"
#include "ui/settings/settings_window.h"
#include "ui/settings/snippets_tab.h"
#include "ui/settings/windows_tab.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSlider>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace tessary {
namespace {

constexpr quint32 upKey = 111;
constexpr quint32 yKey = 29;

template <typename T> T *withText(QWidget *root, const QString &text)
{
    for (T *widget : root->findChildren<T *>()) {
        if (widget->text() == text)
            return widget;
    }
    return nullptr;
}

class SettingsWindowTest : public ::testing::Test {
protected:
    SettingsWindowTest() { positions.codes = {{upKey, 126}, {yKey, 16}}; }

    SettingsWindow &window()
    {
        if (!m_window) {
            m_window = std::make_unique<SettingsWindow>(SettingsServices{settings, clipboard, snippets, desktop,
                loginItem, desktop, positions, [this](bool on) { suspensions.push_back(on); },
                [](const QString &id) -> std::optional<QString> {
                    if (id == QLatin1String("org.keepassxc.KeePassXC"))
                        return QStringLiteral("KeePassXC");
                    return std::nullopt;
                }});
            m_window->present();
        }
        return *m_window;
    }

    ActionRecorder *recorder(HotAction action)
    {
        return window().findChild<ActionRecorder *>(QStringLiteral("recorder.") + rawValue(action));
    }

    // Clicks `action`'s recorder and presses a hardware key with Ctrl+Alt.
    void record(HotAction action, quint32 nativeKey)
    {
        window().tabs()->setCurrentWidget(window().windowsTab());
        QTest::mouseClick(recorder(action), Qt::LeftButton);
        QKeyEvent event(QEvent::KeyPress, Qt::Key_unknown, Qt::ControlModifier | Qt::AltModifier, nativeKey, 0, 0);
        QApplication::sendEvent(recorder(action), &event);
    }

    bool warned(HotAction action) { return !window().windowsTab()->warning(action)->isHidden(); }

    QTemporaryDir data;
    MemoryKeyValueStore defaults;
    AppSettings settings{defaults};
    FakePasteboard pasteboard;
    ClipboardStore clipboard{data.path(), pasteboard};
    SnippetStore snippets{data.path()};
    FakeDesktop desktop;
    FakeLoginItem loginItem;
    FakeKeyPositions positions;
    std::vector<bool> suspensions;

private:
    std::unique_ptr<SettingsWindow> m_window;
};

TEST_F(SettingsWindowTest, aDuplicateWarnsOnBothRowsUntilEitherChanges)
{
    record(HotAction::bottomHalf, upKey);
    EXPECT_EQ(settings.combo(HotAction::bottomHalf), (KeyCombo{126, 6144}));
    EXPECT_TRUE(warned(HotAction::topHalf));
    EXPECT_TRUE(warned(HotAction::bottomHalf));
    EXPECT_FALSE(warned(HotAction::leftHalf));
    EXPECT_EQ(recorder(HotAction::bottomHalf)->text(), QStringLiteral("Ctrl+Alt+Up"));
    EXPECT_EQ(suspensions, (std::vector<bool>{true, false}));

    record(HotAction::topHalf, yKey);
    EXPECT_FALSE(warned(HotAction::topHalf));
    EXPECT_FALSE(warned(HotAction::bottomHalf));

    window().setFailed({HotAction::maximize});
    EXPECT_TRUE(warned(HotAction::maximize));
}

TEST_F(SettingsWindowTest, theGapSliderShowsAndStoresWholePoints)
{
    window().windowsTab()->gapSlider()->setValue(12);
    EXPECT_EQ(window().windowsTab()->gapText()->text(), QStringLiteral("Gap around windows: 12 pt"));
    EXPECT_EQ(settings.data().gap, 12);
}

TEST_F(SettingsWindowTest, neverForgettingStoresZeroDays)
{
    ClipboardTab *tab = window().clipboardTab();
    tab->forgetAfter()->setCurrentIndex(tab->forgetAfter()->findText(QStringLiteral("Never")));
    EXPECT_EQ(settings.data().clipboardRetentionDays, 0);
}

TEST_F(SettingsWindowTest, anExcludedApplicationIsAddedOnceAndNamedFromItsEntry)
{
    const RunningApp keepass{77, QStringLiteral("org.keepassxc.KeePassXC"), QStringLiteral("KeePassXC")};
    desktop.addWindow(keepass, {0, 0, 100, 100});
    ClipboardTab *tab = window().clipboardTab();
    for (int i = 0; i < 2; ++i) {
        Q_EMIT tab->addAppMenu()->aboutToShow();
        QAction *item = nullptr;
        for (QAction *action : tab->addAppMenu()->actions())
            item = action->text() == QLatin1String("KeePassXC") ? action : item;
        ASSERT_NE(item, nullptr);
        item->trigger();
    }
    EXPECT_EQ(settings.data().clipboardExcluded.count(keepass.id), 1);
    EXPECT_NE(withText<QLabel>(tab, QStringLiteral("KeePassXC")), nullptr);
    // Unknown ids are named by their last part.
    EXPECT_NE(withText<QLabel>(tab, QStringLiteral("bitwarden")), nullptr);
}

TEST_F(SettingsWindowTest, clearingEverythingAsksFirst)
{
    ClipboardTab *tab = window().clipboardTab();
    pasteboard.writeString(QStringLiteral("kept?"));
    clipboard.poll();
    ASSERT_EQ(clipboard.items().size(), 1);
    for (const bool confirm : {false, true}) {
        withText<QPushButton>(tab, QStringLiteral("Clear everything"))->click();
        ASSERT_NE(tab->confirmation(), nullptr);
        EXPECT_EQ(tab->confirmation()->text(), QStringLiteral("Delete all clipboard history, including pinned items?"));
        QAbstractButton *button = confirm
            ? withText<QPushButton>(tab->confirmation(), QStringLiteral("Delete everything"))
            : tab->confirmation()->button(QMessageBox::Cancel);
        button->click();
        EXPECT_EQ(clipboard.items().size(), confirm ? 0 : 1);
    }
}

TEST_F(SettingsWindowTest, webSearchesAreEditedInPlaceAndResetToTheSevenDefaults)
{
    LauncherTab *tab = window().launcherTab();
    withText<QPushButton>(tab, QStringLiteral("Add search"))->click();
    ASSERT_EQ(settings.data().webSearches.size(), 8);
    EXPECT_EQ(settings.data().webSearches.last().url, QLatin1String(LauncherTab::exampleUrl));
    QLineEdit *name = withText<QLineEdit>(tab, QStringLiteral("Google"));
    ASSERT_NE(name, nullptr);
    // Tab goes through the rows before the buttons made before them.
    EXPECT_EQ(withText<QCheckBox>(
                  tab, QString::fromUtf16(u"Include system commands (sleep, lock, dark mode, empty trash\u2026)"))
                  ->nextInFocusChain(),
        withText<QLineEdit>(tab, QStringLiteral("g")));
    name->setFocus();
    QTest::keyClicks(name, QStringLiteral("!"));
    EXPECT_EQ(settings.data().webSearches.first().name, QStringLiteral("Google!"));
    EXPECT_EQ(withText<QLineEdit>(tab, QStringLiteral("Google!")), name);

    withText<QPushButton>(tab, QStringLiteral("Reset to defaults"))->click();
    EXPECT_EQ(settings.data().webSearches, WebSearch::defaults());
    EXPECT_EQ(withText<QLineEdit>(tab, QStringLiteral("Google!")), nullptr);
    EXPECT_NE(withText<QLineEdit>(tab, QStringLiteral("Google")), nullptr);
}

TEST_F(SettingsWindowTest, theFailedSectionListsTakenShortcutsSortedByAction)
{
    const auto section = [this] {
        for (QGroupBox *box : window().general()->findChildren<QGroupBox *>()) {
            if (box->title() == QLatin1String("Shortcuts that couldn't be registered"))
                return box;
        }
        return static_cast<QGroupBox *>(nullptr);
    };
    ASSERT_NE(section(), nullptr);
    EXPECT_TRUE(section()->isHidden());

    settings.set(std::nullopt, HotAction::maximize);
    window().setFailed({HotAction::maximize, HotAction::center});
    EXPECT_FALSE(section()->isHidden());
    QStringList rows;
    for (QLabel *label : section()->findChildren<QLabel *>()) {
        if (label->text().contains(QLatin1String("already used")))
            rows << label->text();
    }
    EXPECT_EQ(rows,
        (QStringList{QStringLiteral("Center (Ctrl+Alt+C) is already used by the desktop or another app."),
            QStringLiteral("Maximize () is already used by the desktop or another app.")}));
}

TEST_F(SettingsWindowTest, openingAtLoginShowsTheRealStateAndFailures)
{
    QCheckBox *toggle = withText<QCheckBox>(window().general(), QStringLiteral("Open Tessary when I log in"));
    auto *error = window().general()->findChild<QLabel *>(QStringLiteral("loginError"));
    toggle->click();
    EXPECT_EQ(loginItem.current, LoginItem::Status::enabled);
    EXPECT_TRUE(toggle->isChecked());
    loginItem.failure = QStringLiteral("Could not write the entry");
    toggle->click();
    EXPECT_TRUE(toggle->isChecked());
    EXPECT_FALSE(error->isHidden());
    EXPECT_EQ(error->text(), *loginItem.failure);
}

TEST_F(SettingsWindowTest, thePermissionRowFollowsTheWindowManager)
{
    EXPECT_NE(withText<QLabel>(window().general(), QStringLiteral("Window management is available")), nullptr);
    desktop.setTrusted(false);
    window().general()->refreshTrust();
    EXPECT_NE(withText<QLabel>(window().general(), QStringLiteral("A window manager is needed")), nullptr);
}

TEST_F(SettingsWindowTest, snippetsAreAddedEditedAndRemoved)
{
    SnippetsTab *tab = window().snippetsTab();
    EXPECT_FALSE(tab->removeButton()->isEnabled());
    tab->addButton()->click();
    ASSERT_EQ(snippets.snippets().size(), 3);
    EXPECT_EQ(tab->selection(), snippets.snippets().last().id);
    EXPECT_EQ(tab->nameEdit()->text(), QStringLiteral("New snippet"));
    tab->keywordEdit()->setFocus();
    QTest::keyClicks(tab->keywordEdit(), QStringLiteral("sig"));
    tab->textEdit()->setPlainText(QStringLiteral("Best,\n{clipboard}"));
    EXPECT_EQ(snippets.snippets().last().keyword, QStringLiteral("sig"));
    EXPECT_EQ(snippets.snippets().last().text, QStringLiteral("Best,\n{clipboard}"));

    tab->removeButton()->click();
    EXPECT_EQ(snippets.snippets().size(), 2);
    EXPECT_FALSE(tab->selection().has_value());
}

} // namespace
} // namespace tessary

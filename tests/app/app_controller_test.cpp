#include "app/app_controller.h"

#include "core/clipboard/clipboard_store.h"
#include "core/launcher/launcher_engine.h"
#include "core/platform/desktop_opener.h"
#include "core/settings/app_settings.h"
#include "core/windows/drag_snapper.h"
#include "platform/fake/app/fake_key_positions.h"
#include "platform/fake/app/fake_keystroke_sender.h"
#include "platform/fake/app/fake_login_item.h"
#include "platform/fake/clipboard/fake_pasteboard.h"
#include "platform/fake/launcher/fake_application_catalog.h"
#include "platform/fake/launcher/fake_file_search_backend.h"
#include "platform/fake/launcher/recording_process_launcher.h"
#include "platform/fake/memory_key_value_store.h"
#include "platform/fake/windows/fake_desktop.h"
#include "platform/fake/windows/fake_hot_key_service.h"
#include "ui/settings/action_recorder.h"
#include "ui/settings/settings_window.h"
#include "ui/toast.h"
#include "ui/tray_menu.h"

#include <QFile>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>

namespace tessary {

void PrintTo(const Rect &r, std::ostream *os) { *os << r.x << "," << r.y << " " << r.width << "x" << r.height; }

namespace {

class RecordingOpener final : public DesktopOpener {
public:
    bool openUrl(const QUrl &url) override { return record(url.toString()); }
    bool openFile(const QString &path) override { return record(path); }
    bool openApplication(const QString &path) override { return record(path); }
    bool revealInFileManager(const QString &path) override { return record(path); }
    QStringList opened;

private:
    bool record(const QString &what)
    {
        opened.append(what);
        return true;
    }
};

const RunningApp editor{4242, QStringLiteral("editor"), QStringLiteral("Editor")};
// 1440x900 display; accessibility frame of its left half.
const Rect leftHalfFrame{0, 0, 720, 900};

// The user-facing log is resolved once per process: keep it in a folder of the test's own.
QString logPath()
{
    static QTemporaryDir state;
    static const bool redirected = qputenv("XDG_STATE_HOME", state.path().toUtf8());
    Q_UNUSED(redirected);
    return state.filePath(QStringLiteral("Tessary/Tessary.log"));
}

QString logText()
{
    QFile file(logPath());
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString toastText()
{
    QWidget *toast = Toast::current();
    if (!toast || !toast->isVisible())
        return {};
    auto *label = toast->findChild<QLabel *>();
    return label ? label->text() : QString();
}

class AppControllerTest : public ::testing::Test {
protected:
    AppControllerTest()
    {
        logPath();
        desktop.setScreens({{{0, 0, 1440, 900}, {0, 0, 1440, 900}}});
        window = desktop.addWindow(editor, {100, 100, 400, 300});
    }

    AppPorts portsOn(FakeDesktop &d)
    {
        return {d, d, d, d, hotKeys, pasteboard, keystrokes, defaults, opener, fileSearch, processes,
            std::make_shared<FakeApplicationCatalog>(), keyPositions, loginItem};
    }
    AppController &controller()
    {
        if (!m_controller)
            m_controller = std::make_unique<AppController>(portsOn(desktop), data.path());
        return *m_controller;
    }
    void destroyController() { m_controller.reset(); }

    FakeDesktop desktop;
    FakeHotKeyService hotKeys;
    FakePasteboard pasteboard;
    FakeKeystrokeSender keystrokes;
    FakeKeyPositions keyPositions;
    FakeLoginItem loginItem;
    MemoryKeyValueStore defaults;
    RecordingOpener opener;
    FakeFileSearchBackend fileSearch;
    RecordingProcessLauncher processes;
    QTemporaryDir data;
    WindowId window = 0;

private:
    std::unique_ptr<AppController> m_controller;
};

TEST_F(AppControllerTest, failuresAreShownWithTheirMessages)
{
    const struct {
        const char *name;
        std::function<void(FakeDesktop &, WindowId)> arrange;
        HotAction action;
        QString message;
    } cases[] = {
        {"untrusted", [](FakeDesktop &d, WindowId) { d.setTrusted(false); }, HotAction::leftHalf,
            QStringLiteral("Tessary needs Accessibility permission to move windows.")},
        {"no window", [](FakeDesktop &d, WindowId w) { d.closeWindow(w); }, HotAction::maximize,
            QStringLiteral("No window to move.")},
        {"full screen", [](FakeDesktop &d, WindowId w) { d.setFullScreen(w, true); }, HotAction::center,
            QStringLiteral("Full-screen windows can't be snapped.")},
        {"immovable", [](FakeDesktop &d, WindowId w) { d.setAcceptsMoves(w, false); }, HotAction::topLeft,
            QStringLiteral("This window can't be moved or resized.")},
    };
    for (const auto &c : cases) {
        FakeDesktop fresh;
        fresh.setScreens({{{0, 0, 1440, 900}, {0, 0, 1440, 900}}});
        const WindowId w = fresh.addWindow(editor, {100, 100, 400, 300});
        c.arrange(fresh, w);
        AppController subject(portsOn(fresh), data.path());
        subject.perform(c.action);
        EXPECT_EQ(toastText(), c.message) << c.name;
    }
}

TEST_F(AppControllerTest, startupAnnouncesTheShortcutsAndThenAnyTakenOnes)
{
    controller().launchApp({});
    EXPECT_EQ(toastText(),
        QString::fromUtf16(
            u"Tessary is running in the system tray  \u00B7  Launcher Ctrl+Alt+Space  \u00B7  Clipboard Ctrl+Alt+V"));
    destroyController();

    AppSettings(defaults).set(std::nullopt, HotAction::launcher);
    hotKeys.holdByOtherApp(defaultCombo(HotAction::maximize));
    EXPECT_EQ(AppController::startupMessage(AppSettings(defaults)),
        QString::fromUtf16(
            u"Tessary is running in the system tray  \u00B7  Launcher not set  \u00B7  Clipboard Ctrl+Alt+V"));
    controller().launchApp({});
    EXPECT_EQ(controller().failed(), QSet<HotAction>{HotAction::maximize});
    EXPECT_EQ(toastText(),
        QString::fromUtf16(
            u"Some Tessary shortcuts are taken by another app. Open Settings \u203A General to see which."));
}

TEST_F(AppControllerTest, theAccessibilityPromptComesOnlyOnTheFirstUntrustedLaunch)
{
    const QString asked = QString::fromLatin1(AppController::askedAccessibilityKey);
    desktop.setTrusted(false);

    controller().launchApp({QStringLiteral("--show"), QStringLiteral("clipboard")});
    EXPECT_FALSE(defaults.boolean(asked)) << "--show ends start-up before the prompt";
    EXPECT_EQ(controller().settingsWindow(), nullptr);
    destroyController();

    controller().launchApp({});
    EXPECT_EQ(defaults.boolean(asked), true);
    ASSERT_NE(controller().settingsWindow(), nullptr);
    EXPECT_TRUE(controller().settingsWindow()->isVisible());
    destroyController();

    controller().launchApp({});
    EXPECT_EQ(controller().settingsWindow(), nullptr);
}

TEST_F(AppControllerTest, aMenuChoiceRunsItsActionAfterTheMenuHasClosed)
{
    controller().launchApp({});
    ASSERT_TRUE(controller().trayMenu().trigger(QStringLiteral("Left half")));
    EXPECT_EQ(desktop.windowFrame(window), (Rect{100, 100, 400, 300}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return desktop.windowFrame(window) == leftHalfFrame; }));
    EXPECT_TRUE(logText().contains(QLatin1String("shortcut fired: leftHalf\n")));
}

TEST_F(AppControllerTest, aPendingMenuChoiceDiesWithTheController)
{
    controller().launchApp({});
    ASSERT_TRUE(controller().trayMenu().trigger(QStringLiteral("Maximize")));
    destroyController();
    QTest::qWait(int(AppController::menuDelay.count()) * 3);
    EXPECT_EQ(desktop.windowFrame(window), (Rect{100, 100, 400, 300}));
}

TEST_F(AppControllerTest, pauseTogglesTheHistoryAndItsCheckMark)
{
    controller().launchApp({});
    QAction *pause = controller().trayMenu().pauseItem();
    for (const bool paused : {true, false}) {
        ASSERT_TRUE(controller().trayMenu().trigger(QStringLiteral("Pause Clipboard History")));
        EXPECT_EQ(controller().clipboard().paused(), paused);
        EXPECT_EQ(pause->isChecked(), paused);
    }
}

TEST_F(AppControllerTest, schedulePastePostsTheKeystrokeOnlyWhenTrusted)
{
    controller().schedulePaste();
    EXPECT_EQ(keystrokes.pastes, 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return keystrokes.pastes == 1; }));

    desktop.setTrusted(false);
    controller().schedulePaste();
    QTest::qWait(int(AppController::pasteDelay.count()) * 3);
    EXPECT_EQ(keystrokes.pastes, 1);
    EXPECT_EQ(
        toastText(), QStringLiteral("Copied. Press Ctrl+V to paste. Start a window manager to paste automatically."));
}

TEST_F(AppControllerTest, launcherRowsCopyAndPasteAsTheirOwnUnrecordedChanges)
{
    controller().launchApp({});
    LauncherActions &actions = controller().launcher().actions;

    actions.copy(QStringLiteral("42"));
    EXPECT_EQ(pasteboard.content().string, QStringLiteral("42"));
    EXPECT_EQ(toastText(), QStringLiteral("Copied 42"));
    actions.paste(QStringLiteral("snippet text"));
    EXPECT_EQ(pasteboard.content().string, QStringLiteral("snippet text"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return keystrokes.pastes == 1; }));
    EXPECT_TRUE(controller().clipboard().items().isEmpty()) << "our own writes are not history";

    pasteboard.copyText(QStringLiteral("from another app"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return controller().clipboard().items().size() == 1; }));
    actions.pasteClip(controller().clipboard().items().first());
    EXPECT_TRUE(QTest::qWaitFor([&] { return keystrokes.pastes == 2; }));

    actions.open(QUrl(QStringLiteral("https://example.org/")));
    EXPECT_EQ(opener.opened, QStringList{QStringLiteral("https://example.org/")});
}

TEST_F(AppControllerTest, dragSnappingStartsAndSettingsAreAppliedAtOnceExceptShortcutsWhileSuspended)
{
    controller().launchApp({});
    EXPECT_EQ(desktop.mouseListeners(), 1);
    ASSERT_TRUE(controller().dragSnapper());
    SettingsData changed = controller().settings().data();
    changed.gap = 12;
    changed.dragSnap = false;
    changed.clipboardMax = 7;
    changed.clipboardRetentionDays = 3;
    changed.clipboardExcluded = {QStringLiteral("keepass")};
    controller().settings().setData(changed);
    EXPECT_EQ(controller().windows().gap(), 12);
    EXPECT_FALSE(controller().dragSnapper()->enabled());
    EXPECT_EQ(controller().clipboard().maxItems, 7);
    EXPECT_EQ(controller().clipboard().retentionDays, 3);
    EXPECT_EQ(controller().clipboard().excludedApps, QSet<QString>{QStringLiteral("keepass")});

    controller().setSuspended(true);
    EXPECT_EQ(hotKeys.registrationCount(), 0);
    controller().settings().set(std::nullopt, HotAction::center);
    EXPECT_EQ(hotKeys.registrationCount(), 0);
    controller().setSuspended(false);
    EXPECT_EQ(hotKeys.registrationCount(), 19);
}

TEST_F(AppControllerTest, onlyShortcutChangesAndKeyboardChangesRegisterAgain)
{
    const KeyCombo leftHalf = defaultCombo(HotAction::leftHalf);
    hotKeys.holdByOtherApp(leftHalf);
    controller().launchApp({});
    controller().showSettings();
    QGroupBox *section = nullptr;
    for (QGroupBox *box : controller().settingsWindow()->findChildren<QGroupBox *>())
        section = box->title() == QLatin1String("Shortcuts that couldn't be registered") ? box : section;
    ASSERT_NE(section, nullptr);
    EXPECT_FALSE(section->isHidden());

    // Registering again would now succeed: the failure stays while nothing asks.
    hotKeys.releaseByOtherApp(leftHalf);
    SettingsData typed = controller().settings().data();
    typed.webSearches.first().name += QStringLiteral("!");
    typed.gap = 4;
    controller().settings().setData(typed);
    EXPECT_EQ(controller().failed(), QSet<HotAction>{HotAction::leftHalf});

    hotKeys.changeKeyboard();
    EXPECT_TRUE(controller().failed().isEmpty());
    EXPECT_TRUE(hotKeys.isRegistered(leftHalf));
    EXPECT_TRUE(section->isHidden());

    // A shortcut change registers at once: now two actions share one combination.
    controller().settings().set(defaultCombo(HotAction::center), HotAction::maximize);
    EXPECT_EQ(controller().failed(), QSet<HotAction>{HotAction::center});
    EXPECT_FALSE(section->isHidden());
}

TEST_F(AppControllerTest, aRegisteredCombinationIsRecordedInsteadOfFiredAndRegisteredAfterwards)
{
    controller().launchApp({QStringLiteral("--show"), QStringLiteral("launcher")});
    ASSERT_TRUE(controller().trayMenu().settingsItem()->isEnabled());
    controller().openSettings();
    ASSERT_NE(controller().settingsWindow(), nullptr);
    SettingsWindow *first = controller().settingsWindow();
    controller().showSettings();
    EXPECT_EQ(controller().settingsWindow(), first);

    const KeyCombo maximize = defaultCombo(HotAction::maximize);
    auto *recorder = controller().settingsWindow()->findChild<ActionRecorder *>(QStringLiteral("recorder.leftHalf"));
    controller().settingsWindow()->tabs()->setCurrentIndex(1);
    QTest::mouseClick(recorder, Qt::LeftButton);
    EXPECT_TRUE(controller().suspended());
    EXPECT_FALSE(hotKeys.press(maximize));
    // Return, the key of the maximize shortcut, at X keycode 36.
    keyPositions.codes.insert(36, 36);
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Return, Qt::ControlModifier | Qt::AltModifier, 36, 0, 0);
    QApplication::sendEvent(recorder, &event);

    EXPECT_FALSE(controller().suspended());
    EXPECT_EQ(controller().settings().combo(HotAction::leftHalf), maximize);
    EXPECT_TRUE(hotKeys.isRegistered(maximize));
    EXPECT_FALSE(hotKeys.isRegistered(defaultCombo(HotAction::leftHalf)));
    EXPECT_EQ(controller().failed(), QSet<HotAction>{HotAction::maximize});
    EXPECT_FALSE(logText().contains(QLatin1String("shortcut fired: maximize")));
}

} // namespace
} // namespace tessary

#pragma once

#include "app/app_ports.h"
#include "core/app/hot_action.h"
#include "core/windows/window_manager.h"

#include <QList>
#include <QObject>
#include <QSet>
#include <QStringList>

#include <chrono>
#include <memory>
#include <optional>

namespace tessary {

class AppIndex;
class AppSettings;
class ClipboardStore;
class DragSnapper;
class FileSearcher;
class HotKeyCenter;
class LauncherEngine;
class PanelController;
class SettingsWindow;
class SnippetStore;
class StatusItem;
class TrayMenu;
class UsageTracker;

// The composition root: owns every long-lived object, builds the tray menu,
// registers the global shortcuts from the settings, turns each fired shortcut
// or menu choice into an action and shows failures as toasts. Main thread
// only; every deferred call holds the controller weakly.
class AppController : public QObject {
    Q_OBJECT

public:
    static constexpr const char *askedAccessibilityKey = "tessary.askedAccessibility";
    static constexpr std::chrono::milliseconds menuDelay{80};
    static constexpr std::chrono::milliseconds pasteDelay{120};
    static constexpr int launcherWidth = 680;
    static constexpr std::chrono::milliseconds showOptionDelay{1000};

    // Creates the stores (reading their files in `dataDirectory`), the window
    // manager, the hot key center and the tray menu; nothing is shown,
    // registered or watched until launchApp.
    AppController(const AppPorts &ports, const QString &dataDirectory, QObject *parent = nullptr);
    ~AppController() override;

    // The start-up sequence; `arguments` without the program name.
    void launchApp(const QStringList &arguments);

    void buildStatusItem();
    void applySettings();
    void registerHotkeys();
    void perform(HotAction action);
    void handle(WindowManager::Failure failure);
    // A menu item's represented object: a hot action's raw value runs that
    // action after menuDelay; anything else does nothing.
    void menuAction(const QString &representedObject);
    void togglePause();
    void openSettings();
    void showSettings();
    void toggleLauncher(const QString &initialQuery);
    void toggleClipboard();
    // Pastes what was just put on the pasteboard into the window the user
    // worked in, pasteDelay later.
    void schedulePaste();
    // A later start of tessary handed over its arguments.
    void onForwarded(const QStringList &arguments);

    // While the settings window records a shortcut no shortcut is registered.
    bool suspended() const { return m_suspended; }
    void setSuspended(bool suspended);

    // Actions whose shortcut could not be registered at the last registerHotkeys.
    const QSet<HotAction> &failed() const { return m_failed; }

    AppSettings &settings() const { return *m_settings; }
    WindowManager &windows() const { return *m_windows; }
    ClipboardStore &clipboard() const { return *m_clipboard; }
    SnippetStore &snippets() const { return *m_snippets; }
    AppIndex &appIndex() const { return *m_appIndex; }
    LauncherEngine &launcher() const { return *m_launcher; }
    TrayMenu &trayMenu() const { return *m_trayMenu; }
    PanelController &launcherPanel() const { return *m_launcherPanel; }
    PanelController &clipPanel() const { return *m_clipPanel; }
    // Created by the first applySettings.
    DragSnapper *dragSnapper() const { return m_dragSnapper.get(); }
    // Created by the first showSettings.
    SettingsWindow *settingsWindow() const { return m_settingsWindow.get(); }

    static QString startupMessage(const AppSettings &settings);

Q_SIGNALS:
    void failedChanged();
    // Start-up reached the point where shortcuts are registered and the clipboard is watched.
    void ready();

private:
    void handleShowOption(const QStringList &arguments, std::chrono::milliseconds delay);
    void promptForAccessibilityOnce();
    void fillLauncherActions();
    // Puts `text` on the pasteboard as this process's own change (not recorded).
    void putOnPasteboard(const QString &text);
    // Every action's shortcut in allCases order; none where cleared.
    QList<std::optional<KeyCombo>> effectiveCombos() const;

    AppPorts m_ports;
    std::unique_ptr<AppSettings> m_settings;
    std::unique_ptr<WindowManager> m_windows;
    std::unique_ptr<HotKeyCenter> m_hotKeys;
    std::unique_ptr<ClipboardStore> m_clipboard;
    std::unique_ptr<SnippetStore> m_snippets;
    std::unique_ptr<AppIndex> m_appIndex;
    std::unique_ptr<UsageTracker> m_usage;
    std::unique_ptr<FileSearcher> m_files;
    std::unique_ptr<LauncherEngine> m_launcher;
    std::unique_ptr<DragSnapper> m_dragSnapper;
    std::unique_ptr<TrayMenu> m_trayMenu;
    std::unique_ptr<StatusItem> m_statusItem;
    std::unique_ptr<PanelController> m_launcherPanel;
    std::unique_ptr<PanelController> m_clipPanel;
    std::unique_ptr<SettingsWindow> m_settingsWindow;
    QSet<HotAction> m_failed;
    // What the last registerHotkeys registered; empty while nothing is.
    QList<std::optional<KeyCombo>> m_registered;
    bool m_suspended = false;
};

} // namespace tessary

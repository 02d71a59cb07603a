#pragma once

#include "core/app/hot_action.h"
#include "ui/settings/settings_services.h"

#include <QSet>
#include <QWidget>

class QTabWidget;

namespace tessary {

class ClipboardTab;
class GeneralTab;
class LauncherTab;
class SnippetsTab;
class WindowsTab;

// "Tessary Settings": five tabs that write every change straight into the
// stores, which save and apply it. Closing only hides the window; the owner
// reuses it. Main thread only.
class SettingsWindow : public QWidget {
    Q_OBJECT

public:
    static constexpr int tabWidth = 680;
    static constexpr int tabHeight = 540;

    explicit SettingsWindow(const SettingsServices &services, QWidget *parent = nullptr);
    ~SettingsWindow() override;

    // The actions whose shortcut could not be registered.
    void setFailed(const QSet<HotAction> &failed);
    // Shows the window in front, with the keyboard.
    void present();

    QTabWidget *tabs() const { return m_tabs; }
    GeneralTab *general() const { return m_general; }
    WindowsTab *windowsTab() const { return m_windows; }
    ClipboardTab *clipboardTab() const { return m_clipboard; }
    LauncherTab *launcherTab() const { return m_launcher; }
    SnippetsTab *snippetsTab() const { return m_snippets; }

private:
    SettingsServices m_services;
    QTabWidget *m_tabs = nullptr;
    GeneralTab *m_general = nullptr;
    WindowsTab *m_windows = nullptr;
    ClipboardTab *m_clipboard = nullptr;
    LauncherTab *m_launcher = nullptr;
    SnippetsTab *m_snippets = nullptr;
    // Centred on the screen when first shown; later it opens where the user left it.
    bool m_placed = false;
};

} // namespace tessary

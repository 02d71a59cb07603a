#include "ui/settings/settings_window.h"

#include "ui/settings/clipboard_tab.h"
#include "ui/settings/general_tab.h"
#include "ui/settings/launcher_tab.h"
#include "ui/settings/snippets_tab.h"
#include "ui/settings/windows_tab.h"
#include "ui/symbol_icons.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

namespace tessary {

SettingsWindow::SettingsWindow(const SettingsServices &services, QWidget *parent)
    : QWidget(parent, Qt::Window | Qt::WindowTitleHint | Qt::WindowCloseButtonHint | Qt::WindowMinimizeButtonHint)
    , m_services(services)
{
    setWindowTitle(QStringLiteral("Tessary Settings"));
    setObjectName(QStringLiteral("settingsWindow"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_tabs = new QTabWidget(this);
    m_tabs->setDocumentMode(true);
    m_general = new GeneralTab(m_services, m_tabs);
    m_windows = new WindowsTab(m_services, m_tabs);
    m_clipboard = new ClipboardTab(m_services, m_tabs);
    m_launcher = new LauncherTab(m_services, m_tabs);
    m_snippets = new SnippetsTab(m_services, m_tabs);
    m_tabs->addTab(m_general, SymbolIcons::icon(QStringLiteral("gearshape")), QStringLiteral("General"));
    m_tabs->addTab(m_windows, SymbolIcons::icon(QStringLiteral("rectangle.split.2x2")), QStringLiteral("Windows"));
    m_tabs->addTab(m_clipboard, SymbolIcons::icon(QStringLiteral("doc.on.clipboard")), QStringLiteral("Clipboard"));
    m_tabs->addTab(m_launcher, SymbolIcons::icon(QStringLiteral("magnifyingglass")), QStringLiteral("Launcher"));
    m_tabs->addTab(m_snippets, SymbolIcons::icon(QStringLiteral("text.append")), QStringLiteral("Snippets"));
    m_tabs->setFixedSize(tabWidth, tabHeight);
    layout->addWidget(m_tabs);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

SettingsWindow::~SettingsWindow() = default;

void SettingsWindow::setFailed(const QSet<HotAction> &failed)
{
    m_general->setFailed(failed);
    m_windows->setFailed(failed);
}

void SettingsWindow::present()
{
    if (!m_placed) {
        m_placed = true;
        adjustSize();
        if (const QScreen *screen = QGuiApplication::primaryScreen()) {
            QRect frame = frameGeometry();
            frame.moveCenter(screen->availableGeometry().center());
            move(frame.topLeft());
        }
    }
    // The keyboard starts on the tabs: arrows switch them, Tab enters the page.
    if (!focusWidget())
        m_tabs->tabBar()->setFocus(Qt::ActiveWindowFocusReason);
    setWindowState((windowState() & ~Qt::WindowMinimized) | Qt::WindowActive);
    show();
    raise();
    activateWindow();
}

} // namespace tessary

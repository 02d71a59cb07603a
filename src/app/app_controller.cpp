#include "app/app_controller.h"

#include "app/app_logging.h"
#include "core/app/log.h"
#include "core/clipboard/clip_popup_model.h"
#include "core/clipboard/clipboard_store.h"
#include "core/launcher/app_index.h"
#include "core/launcher/file_searcher.h"
#include "core/launcher/launcher_engine.h"
#include "core/launcher/launcher_model.h"
#include "core/launcher/usage_tracker.h"
#include "core/platform/accessibility.h"
#include "core/platform/application_catalog.h"
#include "core/platform/key_value_store.h"
#include "core/platform/keystroke_sender.h"
#include "core/platform/panel_keyboard.h"
#include "core/platform/pasteboard.h"
#include "core/settings/app_settings.h"
#include "core/settings/snippet_store.h"
#include "core/shortcuts/hot_key_center.h"
#include "core/windows/ax.h"
#include "core/windows/drag_snapper.h"
#include "ui/clipboard/clipboard_popup_view.h"
#include "ui/launcher_view.h"
#include "ui/panel_controller.h"
#include "ui/settings/settings_window.h"
#include "ui/status_item.h"
#include "ui/toast.h"
#include "ui/tray_menu.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

#include <cstdio>

#include <sys/resource.h>

namespace tessary {

namespace {

const QString separator = QString::fromUtf16(u"  \u00B7  ");

QList<SystemCommand> systemCommands(SessionControl *session)
{
    if (!session)
        return {};
    return SystemCommand::sessionTable(*session, [](const QString &message) { Toast::show(message, 2.2); });
}

QString comboText(const AppSettings &settings, HotAction action)
{
    const std::optional<KeyCombo> combo = settings.combo(action);
    return combo ? combo->display() : QStringLiteral("not set");
}

} // namespace

AppController::AppController(const AppPorts &ports, const QString &dataDirectory, QObject *parent)
    : QObject(parent)
    , m_ports(ports)
    , m_settings(std::make_unique<AppSettings>(ports.defaults))
    , m_windows(std::make_unique<WindowManager>(ports.accessibility, ports.workspace, ports.screens))
    , m_hotKeys(std::make_unique<HotKeyCenter>(ports.hotKeys))
    , m_clipboard(std::make_unique<ClipboardStore>(dataDirectory, ports.pasteboard))
    , m_snippets(std::make_unique<SnippetStore>(dataDirectory))
    , m_appIndex(std::make_unique<AppIndex>(ports.catalog, ports.catalog->defaultRoots()))
    , m_usage(std::make_unique<UsageTracker>(ports.defaults))
    , m_files(std::make_unique<FileSearcher>(ports.fileSearch, QDir::homePath()))
    , m_launcher(std::make_unique<LauncherEngine>(LauncherEngine::Sources{*m_settings, *m_clipboard, *m_snippets,
          *m_appIndex, *m_usage, *m_files, ports.processes, ports.pasteboard, systemCommands(ports.session)}))
    , m_trayMenu(std::make_unique<TrayMenu>())
    , m_launcherPanel(std::make_unique<PanelController>(
          PanelController::Ports{ports.screens, ports.keystrokes, ports.panelKeyboard, &ports.mouse}))
    , m_clipPanel(std::make_unique<PanelController>(
          PanelController::Ports{ports.screens, ports.keystrokes, ports.panelKeyboard, &ports.mouse}))
{
    m_clipboard->frontAppProvider = ClipboardStore::frontAppProviderFor(ports.workspace);
    fillLauncherActions();

    connect(m_trayMenu.get(), &TrayMenu::representedObjectChosen, this, &AppController::menuAction);
    connect(m_trayMenu.get(), &TrayMenu::pauseChosen, this, &AppController::togglePause);
    connect(m_trayMenu.get(), &TrayMenu::settingsChosen, this, &AppController::openSettings);
    connect(m_trayMenu.get(), &TrayMenu::quitChosen, this, [] { QCoreApplication::quit(); });
    // What the new keyboard took or freed shows in the settings at once.
    connect(m_hotKeys.get(), &HotKeyCenter::keyboardChanged, this, [this] {
        if (!m_suspended)
            registerHotkeys();
    });
    // The check mark follows the store, whoever changes the flag.
    connect(m_clipboard.get(), &ClipboardStore::pausedChanged, this,
        [this](bool paused) { m_trayMenu->pauseItem()->setChecked(paused); });
}

AppController::~AppController()
{
    m_settingsWindow.reset();
    m_settings->onChange = nullptr;
}

QString AppController::startupMessage(const AppSettings &settings)
{
#ifdef Q_OS_MACOS
    const QString running = QStringLiteral("Tessary is running in the menu bar");
#else
    const QString running = QStringLiteral("Tessary is running in the system tray");
#endif
    return running + separator + QStringLiteral("Launcher ") + comboText(settings, HotAction::launcher) + separator
        + QStringLiteral("Clipboard ") + comboText(settings, HotAction::clipboard);
}

void AppController::launchApp(const QStringList &arguments)
{
    buildStatusItem();
    m_settings->onChange = [self = QPointer<AppController>(this)] {
        if (self)
            self->applySettings();
    };
    applySettings();

    m_clipboard->startMonitoring();
    m_dragSnapper->start();
    m_appIndex->refresh(true);
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const long long cpuMs = (usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1000LL
        + (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1000;
    qCInfo(lcApp, "ready at %lld ms since the epoch after %lld ms of CPU",
        static_cast<long long>(QDateTime::currentMSecsSinceEpoch()), cpuMs);
    Q_EMIT ready();

    Toast::show(startupMessage(*m_settings), 5.0);
    if (!m_failed.isEmpty()) {
        Toast::show(QString::fromUtf16(
                        u"Some Tessary shortcuts are taken by another app. Open Settings \u203A General to see which."),
            6.0);
    }
    const qsizetype show = arguments.indexOf(QStringLiteral("--show"));
    if (show >= 0 && show + 1 < arguments.size()) {
        handleShowOption(arguments.mid(show + 1), showOptionDelay);
        return;
    }
    promptForAccessibilityOnce();
}

void AppController::buildStatusItem()
{
    if (m_statusItem)
        return;
    m_statusItem = std::make_unique<StatusItem>(m_trayMenu->menu());
    connect(m_statusItem.get(), &StatusItem::shown, this, [](bool inTray) {
        if (inTray)
            return;
        const QString notice = QStringLiteral("The desktop has no system tray: the Tessary menu is unavailable.");
        Log::write(notice);
        std::fprintf(stderr, "tessary: %s\n", qPrintable(notice));
    });
    m_statusItem->show();
}

void AppController::applySettings()
{
    const SettingsData &data = m_settings->data();
    m_windows->setGap(data.gap);
    if (!m_dragSnapper) {
        m_dragSnapper = std::make_unique<DragSnapper>(
            *m_windows, m_ports.accessibility, m_ports.workspace, m_ports.screens, m_ports.mouse);
    }
    m_dragSnapper->setEnabled(data.dragSnap);
    m_clipboard->enabled = data.clipboardEnabled;
    m_clipboard->maxItems = data.clipboardMax;
    m_clipboard->retentionDays = data.clipboardRetentionDays;
    m_clipboard->excludedApps = QSet<QString>(data.clipboardExcluded.cbegin(), data.clipboardExcluded.cend());
    // Typing a web search or moving the gap slider leaves the grabs alone.
    if (!m_suspended && effectiveCombos() != m_registered)
        registerHotkeys();
}

QList<std::optional<KeyCombo>> AppController::effectiveCombos() const
{
    QList<std::optional<KeyCombo>> combos;
    for (HotAction action : HotActions::allCases)
        combos.append(m_settings->combo(action));
    return combos;
}

void AppController::registerHotkeys()
{
    m_hotKeys->unregisterAll();
    m_registered = effectiveCombos();
    QSet<HotAction> failed;
    for (std::size_t i = 0; i < HotActions::allCases.size(); ++i) {
        const HotAction action = HotActions::allCases[i];
        // None: the user cleared this shortcut.
        const std::optional<KeyCombo> &combo = m_registered.at(qsizetype(i));
        if (!combo)
            continue;
        const auto id = m_hotKeys->registerHotKey(*combo, [self = QPointer<AppController>(this), action] {
            if (self)
                self->perform(action);
        });
        if (!id)
            failed.insert(action);
    }
    m_failed = failed;
    Q_EMIT failedChanged();
}

void AppController::setSuspended(bool suspended)
{
    m_suspended = suspended;
    if (suspended) {
        m_hotKeys->unregisterAll();
        m_registered.clear();
    } else {
        registerHotkeys();
    }
}

void AppController::perform(HotAction action)
{
    Log::write(QStringLiteral("shortcut fired: ") + rawValue(action));
    switch (action) {
    case HotAction::nextDisplay:
    case HotAction::previousDisplay:
        m_windows->moveToDisplay(
            action == HotAction::nextDisplay, [this](std::optional<WindowManager::Failure> failure) {
                if (failure)
                    handle(*failure);
            });
        return;
    case HotAction::restore:
        m_windows->restore([this](std::optional<WindowManager::Failure> failure) {
            if (failure)
                handle(*failure);
        });
        return;
    case HotAction::launcher:
        toggleLauncher(QString());
        return;
    case HotAction::clipboard:
        toggleClipboard();
        return;
    default:
        break;
    }
    const std::optional<Layout> layout = layoutFor(action);
    if (!layout)
        return;
    if (!m_ports.accessibility.isTrusted()) {
        handle(WindowManager::Failure::noPermission);
        return;
    }
    const std::optional<AX::FrontWindow> front = AX::frontWindow(m_ports.workspace, m_ports.accessibility);
    if (!front) {
        handle(WindowManager::Failure::noWindow);
        return;
    }
    m_windows->apply(*layout, front->window, front->app.pid, [this](const WindowManager::ApplyResult &result) {
        if (const auto failure = result.failure())
            handle(*failure);
    });
}

void AppController::handle(WindowManager::Failure failure)
{
    if (failure == WindowManager::Failure::noPermission)
        m_ports.accessibility.requestTrust();
    Toast::show(WindowManager::errorDescription(failure), 2.2);
}

void AppController::menuAction(const QString &representedObject)
{
    const std::optional<HotAction> action = HotActions::fromRawValue(representedObject);
    if (!action)
        return;
    // After the menu has closed and the window the user worked in is active again.
    QTimer::singleShot(menuDelay, this, [this, action = *action] { perform(action); });
}

void AppController::togglePause()
{
    m_clipboard->setPaused(!m_clipboard->paused());
    m_trayMenu->pauseItem()->setChecked(m_clipboard->paused());
}

void AppController::openSettings() { showSettings(); }

void AppController::showSettings()
{
    if (!m_settingsWindow) {
        const QPointer<AppController> self(this);
        const SettingsServices services{*m_settings, *m_clipboard, *m_snippets, m_ports.accessibility,
            m_ports.loginItem, m_ports.workspace, m_ports.keyPositions,
            [self](bool recording) {
                if (self)
                    self->setSuspended(recording);
            },
            [self](const QString &id) -> std::optional<QString> {
                if (!self)
                    return std::nullopt;
                for (const AppEntry &app : self->m_appIndex->apps()) {
                    if (app.fileName.compare(id, Qt::CaseInsensitive) == 0)
                        return app.name;
                }
                return std::nullopt;
            }};
        m_settingsWindow = std::make_unique<SettingsWindow>(services);
        m_settingsWindow->setFailed(m_failed);
        connect(this, &AppController::failedChanged, m_settingsWindow.get(),
            [this] { m_settingsWindow->setFailed(m_failed); });
    }
    m_settingsWindow->present();
}

void AppController::toggleLauncher(const QString &initialQuery)
{
    const bool visible = m_launcherPanel->isVisible();
    Log::write(QStringLiteral("toggleLauncher (visible: ")
        + (visible ? QStringLiteral("true") : QStringLiteral("false")) + QLatin1Char(')'));
    if (visible) {
        m_launcherPanel->hide();
        return;
    }
    m_clipPanel->hide();
    m_appIndex->refresh(false);
    auto *model = new LauncherModel(*m_launcher);
    if (!initialQuery.isEmpty())
        model->setQuery(initialQuery);
    model->close = [self = QPointer<AppController>(this)] {
        if (self)
            self->m_launcherPanel->hide();
    };
    auto *view = new LauncherView(*model);
    // The model lives as long as its view: one opening of the panel.
    model->setParent(view);
    m_launcherPanel->show(view, launcherWidth, int(model->height()));
    m_launcherPanel->addSubscription(connect(
        model, &LauncherModel::resultsChanged, this, [this, model] { m_launcherPanel->setHeight(model->height()); }));
}

void AppController::toggleClipboard()
{
    if (m_clipPanel->isVisible()) {
        m_clipPanel->hide();
        return;
    }
    m_launcherPanel->hide();
    auto *model = new ClipPopupModel(*m_clipboard);
    model->close = [self = QPointer<AppController>(this)] {
        if (self)
            self->m_clipPanel->hide();
    };
    model->pasteItem = [self = QPointer<AppController>(this)](const ClipItem &item, bool copyOnly) {
        if (!self)
            return;
        self->m_clipboard->copy(item, false);
        if (copyOnly)
            Toast::show(QStringLiteral("Copied"), 2.2);
        else
            self->schedulePaste();
    };
    auto *view = new ClipboardPopupView(*model, *m_clipboard);
    // One model per opening: it goes with the view when the panel is dropped.
    model->setParent(view);
    m_clipPanel->show(view, ClipboardPopupView::width, ClipboardPopupView::height);
}

void AppController::schedulePaste()
{
    QTimer::singleShot(pasteDelay, this, [this] {
        if (!m_ports.accessibility.isTrusted()) {
            m_ports.accessibility.requestTrust();
            Toast::show(
#ifdef Q_OS_MACOS
                QString::fromUtf16(u"Copied. Press \u2318V to paste. Allow Accessibility to paste automatically."),
#else
                QStringLiteral("Copied. Press Ctrl+V to paste. Start a window manager to paste automatically."),
#endif
                3.5);
            return;
        }
        m_ports.keystrokes.sendPaste([](bool posted) {
            if (!posted)
                qCWarning(lcApp) << "the paste keystroke could not be delivered";
        });
    });
}

void AppController::handleShowOption(const QStringList &panelAndQuery, std::chrono::milliseconds delay)
{
    QTimer::singleShot(delay, this, [this, panelAndQuery] {
        if (panelAndQuery.first() == QLatin1String("clipboard"))
            toggleClipboard();
        else
            toggleLauncher(panelAndQuery.value(1));
    });
}

void AppController::onForwarded(const QStringList &arguments)
{
    const qsizetype show = arguments.indexOf(QStringLiteral("--show"));
    if (show >= 0 && show + 1 < arguments.size()) {
        handleShowOption(arguments.mid(show + 1), std::chrono::milliseconds(0));
        return;
    }
    // Drives the menu without a tray (and in end-to-end tests): --menu <item title>.
    if (arguments.size() >= 2 && arguments.first() == QLatin1String("--menu")) {
        if (!m_trayMenu->trigger(arguments.at(1)))
            qCWarning(lcApp) << "no enabled menu item titled" << arguments.at(1);
        return;
    }
    showSettings();
}

void AppController::fillLauncherActions()
{
    LauncherActions &actions = m_launcher->actions;
    actions.openThrough(m_ports.opener, *m_appIndex);
    const QPointer<AppController> self(this);
    actions.paste = [self](const QString &text) {
        if (!self)
            return;
        self->putOnPasteboard(text);
        self->schedulePaste();
    };
    actions.pasteClip = [self](const ClipItem &item) {
        if (!self)
            return;
        self->m_clipboard->copy(item, false);
        self->schedulePaste();
    };
    actions.copy = [self](const QString &text) {
        if (!self)
            return;
        self->putOnPasteboard(text);
        Toast::show(QStringLiteral("Copied ") + text, 2.2);
    };
    actions.confirm = [self](const QString &question) {
        QMessageBox alert(QMessageBox::Warning, QStringLiteral("Tessary"), question);
        QPushButton *proceed = alert.addButton(QStringLiteral("Continue"), QMessageBox::AcceptRole);
        alert.addButton(QStringLiteral("Cancel"), QMessageBox::RejectRole);
        alert.setDefaultButton(proceed);
        alert.setWindowFlag(Qt::WindowStaysOnTopHint);
        // The user asked for it a moment ago: it takes the keyboard like a panel.
        if (self && self->m_ports.panelKeyboard)
            self->m_ports.panelKeyboard->focusPanel(alert.winId());
        alert.exec();
        return alert.clickedButton() == proceed;
    };
}

void AppController::putOnPasteboard(const QString &text)
{
    m_ports.pasteboard.clear();
    m_ports.pasteboard.writeString(text);
    m_clipboard->ignoreCurrentChange();
}

void AppController::promptForAccessibilityOnce()
{
    const QString key = QString::fromLatin1(askedAccessibilityKey);
    if (m_ports.defaults.boolean(key).value_or(false))
        return;
    m_ports.defaults.setBoolean(key, true);
    if (m_ports.accessibility.isTrusted())
        return;
    showSettings();
    m_ports.accessibility.requestTrust();
}

} // namespace tessary

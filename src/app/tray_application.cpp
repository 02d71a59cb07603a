#include "app/tray_application.h"

#include "app/app_controller.h"
#include "app/single_instance.h"
#include "app/termination_signals.h"
#include "app/x_display_probe.h"
#include "core/app/data_directory.h"
#include "core/clipboard/background_file_writer.h"
#include "core/platform/settings_key_value_store.h"
#include "core/settings/app_settings.h"
#include "core/settings/snippet_store.h"
#include "platform/x11/app/x11_keystroke_sender.h"
#include "platform/x11/app/x11_panel_keyboard.h"
#include "platform/x11/app/xdg_autostart_login_item.h"
#include "platform/x11/clipboard/x11_pasteboard.h"
#include "platform/x11/launcher/desktop_entry_catalog.h"
#include "platform/x11/launcher/desktop_file_search_chain.h"
#include "platform/x11/launcher/detached_process_launcher.h"
#include "platform/x11/launcher/gio_desktop_opener.h"
#include "platform/x11/launcher/session/desktop_session_control.h"
#include "platform/x11/launcher/startup_notifier.h"
#include "platform/x11/windows/x11_accessibility.h"
#include "platform/x11/windows/x11_hot_key_service.h"
#include "platform/x11/windows/x11_key_positions.h"
#include "platform/x11/windows/x11_mouse_monitor.h"
#include "platform/x11/windows/x11_screens.h"
#include "platform/x11/windows/x11_workspace.h"
#include "platform/x11/x11_connection.h"
#include "ui/app_icons.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QIcon>

#include <cstdio>

namespace tessary {

namespace {

constexpr const char *nestedServerHint = "Try it in a nested X server, for example:\n"
                                         "  Xephyr :5 -screen 1280x800 &\n"
                                         "  DISPLAY=:5 openbox &\n"
                                         "  DISPLAY=:5 tessary\n";

// Outside a desktop environment Qt looks only in hicolor, which has next to no
// icons: use a complete theme that is installed.
void chooseIconTheme()
{
    const QString current = QIcon::themeName();
    if (!current.isEmpty() && current != QLatin1String("hicolor"))
        return;
    for (const char *theme : {"Adwaita", "breeze", "Papirus", "elementary"}) {
        for (const QString &path : QIcon::themeSearchPaths()) {
            if (QFileInfo::exists(path + QLatin1Char('/') + QLatin1String(theme) + QStringLiteral("/index.theme"))) {
                QIcon::setThemeName(QLatin1String(theme));
                return;
            }
        }
    }
}

} // namespace

int runTrayApplication(int argc, char **argv, const QStringList &arguments)
{
    XDisplayProbe display;
    if (const std::optional<QString> &problem = display.problem()) {
        std::fprintf(stderr, "tessary: %s %s", qPrintable(*problem), nestedServerHint);
        return 1;
    }
    // The backends are X11 ones, also under an XWayland session.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "xcb");

    QApplication app(argc, argv);
    display.close();
    QApplication::setOrganizationName(QStringLiteral("Tessary"));
    QApplication::setApplicationName(QStringLiteral("Tessary"));
    // Lets the desktop match our windows to the installed desktop entry.
    QApplication::setDesktopFileName(QStringLiteral("org.tessary.Tessary"));
    QApplication::setWindowIcon(AppIcons::application());
    chooseIconTheme();
    // A tray utility: closing a panel or the settings window never ends it.
    QApplication::setQuitOnLastWindowClosed(false);

    SingleInstance instance(SingleInstance::defaultServerName());
    switch (instance.claimOrForward(arguments)) {
    case SingleInstance::Claim::claimed:
        break;
    case SingleInstance::Claim::forwarded:
        return 0;
    case SingleInstance::Claim::unanswered:
        if (const qint64 pid = instance.holderPid())
            std::fprintf(stderr, "tessary: Tessary is running (process %lld) but does not answer.\n", pid);
        else
            std::fputs("tessary: Tessary is running but does not answer.\n", stderr);
        return 1;
    }

    X11Connection *x11 = X11Connection::instance();
    if (!x11) {
        std::fputs("tessary: needs an X11 session.\n", stderr);
        return 1;
    }
    X11Accessibility accessibility(*x11);
    X11Workspace workspace(*x11);
    X11Screens screens(*x11);
    X11MouseMonitor mouse(*x11);
    X11KeyPositions keyPositions(*x11);
    X11HotKeyService hotKeys(*x11, keyPositions);
    X11Pasteboard pasteboard;
    X11KeystrokeSender keystrokes(*x11);
    X11PanelKeyboard panelKeyboard(*x11, hotKeys.keyboardFreeze());
    SettingsKeyValueStore defaults;
    StartupNotifier startupNotifier(*x11);
    GioDesktopOpener opener(&startupNotifier);
    DesktopFileSearchChain fileSearch(QDir::homePath());
    DetachedProcessLauncher processes;
    DesktopSessionControl session(DesktopSessionControl::Environment::current(), processes);
    XdgAutostartLoginItem loginItem;
    const AppPorts ports{accessibility, workspace, screens, mouse, hotKeys, pasteboard, keystrokes, defaults, opener,
        fileSearch.search(), processes, std::make_shared<DesktopEntryCatalog>(), keyPositions, loginItem,
        &panelKeyboard, &session};

    // Only this instance writes there: what a killed one left mid-write can go.
    const QString data = DataDirectory::defaultPath();
    DataDirectory::removeTemporaries(data);
    DataDirectory::removeTemporaries(data + QStringLiteral("/images"));

    // Signals and logout end the event loop, so the stores' queued writes land
    // as they are destroyed. A lost display ends the process through exit(),
    // whose handler lands them too.
    TerminationSignals termination;
    QObject::connect(&termination, &TerminationSignals::received, &app, &QCoreApplication::quit);
    // A start during the last writes waits for them instead of handing its arguments to nobody.
    QObject::connect(&app, &QCoreApplication::aboutToQuit, &instance, &SingleInstance::close);
    QObject::connect(&app, &QGuiApplication::commitDataRequest, &app, [] { BackgroundFileWriter::waitForAllIdle(); });

    AppController controller(ports, data);
    QObject::connect(&app, &QGuiApplication::commitDataRequest, &controller, [&controller] {
        controller.settings().flush();
        controller.snippets().waitForSaved();
    });
    QObject::connect(&instance, &SingleInstance::forwarded, &controller, &AppController::onForwarded);
    controller.launchApp(arguments);
    return QApplication::exec();
}

} // namespace tessary

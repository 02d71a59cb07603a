#include "app/tray_application.h"

#include "app/app_controller.h"
#include "app/single_instance.h"
#include "app/termination_signals.h"
#include "core/app/data_directory.h"
#include "core/clipboard/background_file_writer.h"
#include "core/platform/settings_key_value_store.h"
#include "platform/x11/app/x11_keystroke_sender.h"
#include "platform/x11/app/xdg_autostart_login_item.h"
#include "platform/x11/clipboard/x11_pasteboard.h"
#include "platform/x11/launcher/desktop_entry_catalog.h"
#include "platform/x11/launcher/detached_process_launcher.h"
#include "platform/x11/launcher/gio_desktop_opener.h"
#include "platform/x11/launcher/home_walk_file_search.h"
#include "platform/x11/windows/x11_accessibility.h"
#include "platform/x11/windows/x11_hot_key_service.h"
#include "platform/x11/windows/x11_key_positions.h"
#include "platform/x11/windows/x11_mouse_monitor.h"
#include "platform/x11/windows/x11_screens.h"
#include "platform/x11/windows/x11_workspace.h"
#include "platform/x11/x11_connection.h"

#include <QApplication>
#include <QDir>

#include <xcb/xcb.h>

#include <cstdio>

namespace tessary {

namespace {

constexpr const char *nestedServerHint = "Try it in a nested X server, for example:\n"
                                         "  Xephyr :5 -screen 1280x800 &\n"
                                         "  DISPLAY=:5 openbox &\n"
                                         "  DISPLAY=:5 tessary\n";

// Qt aborts when it cannot open the display; say why instead.
bool displayReachable()
{
    if (qEnvironmentVariableIsEmpty("DISPLAY")) {
        std::fprintf(stderr, "tessary: there is no X display (DISPLAY is not set). %s", nestedServerHint);
        return false;
    }
    xcb_connection_t *probe = xcb_connect(nullptr, nullptr);
    const bool reachable = xcb_connection_has_error(probe) == 0;
    xcb_disconnect(probe);
    if (!reachable) {
        std::fprintf(
            stderr, "tessary: cannot open the X display \"%s\". %s", qgetenv("DISPLAY").constData(), nestedServerHint);
    }
    return reachable;
}

} // namespace

int runTrayApplication(int argc, char **argv)
{
    if (!displayReachable())
        return 1;
    // The backends are X11 ones, also under an XWayland session.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "xcb");

    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Tessary"));
    QApplication::setApplicationName(QStringLiteral("Tessary"));
    // A tray utility: closing a panel or the settings window never ends it.
    QApplication::setQuitOnLastWindowClosed(false);
    const QStringList arguments = QApplication::arguments().mid(1);

    SingleInstance instance(SingleInstance::defaultServerName());
    if (!instance.claimOrForward(arguments))
        return 0;

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
    SettingsKeyValueStore defaults;
    GioDesktopOpener opener;
    HomeWalkFileSearch fileSearch(QDir::homePath());
    DetachedProcessLauncher processes;
    XdgAutostartLoginItem loginItem;
    const AppPorts ports{accessibility, workspace, screens, mouse, hotKeys, pasteboard, keystrokes, defaults, opener,
        fileSearch, processes, std::make_shared<DesktopEntryCatalog>(), keyPositions, loginItem};

    // Only this instance writes there: what a killed one left mid-write can go.
    const QString data = DataDirectory::defaultPath();
    DataDirectory::removeTemporaries(data);
    DataDirectory::removeTemporaries(data + QStringLiteral("/images"));

    // Signals and logout end the event loop, so the stores' queued writes land
    // as they are destroyed. A lost display ends the process through exit(),
    // whose handler lands them too.
    TerminationSignals termination;
    QObject::connect(&termination, &TerminationSignals::received, &app, &QCoreApplication::quit);
    QObject::connect(&app, &QGuiApplication::commitDataRequest, &app, [] { BackgroundFileWriter::waitForAllIdle(); });

    AppController controller(ports, data);
    QObject::connect(&instance, &SingleInstance::forwarded, &controller, &AppController::onForwarded);
    controller.launchApp(arguments);
    return QApplication::exec();
}

} // namespace tessary

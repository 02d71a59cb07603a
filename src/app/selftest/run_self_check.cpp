#include "app/selftest/run_self_check.h"

#include "app/selftest/checks/app_index_check.h"
#include "app/selftest/checks/calculator_check.h"
#include "app/selftest/checks/clipboard_check.h"
#include "app/selftest/checks/data_files_check.h"
#include "app/selftest/checks/display_check.h"
#include "app/selftest/checks/file_search_check.h"
#include "app/selftest/checks/fuzzy_check.h"
#include "app/selftest/checks/keyboard_check.h"
#include "app/selftest/checks/layouts_check.h"
#include "app/selftest/checks/log_file_check.h"
#include "app/selftest/checks/login_item_check.h"
#include "app/selftest/checks/session_end_check.h"
#include "app/selftest/checks/shortcuts_check.h"
#include "app/selftest/checks/snippet_check.h"
#include "app/selftest/checks/system_commands_check.h"
#include "app/selftest/checks/tray_check.h"
#include "app/selftest/checks/window_manager_check.h"
#include "app/selftest/self_check_report.h"
#include "app/selftest/self_check_runner.h"
#include "app/selftest/self_check_window.h"
#include "app/single_instance.h"
#include "app/x_display_probe.h"
#include "core/app/data_directory.h"
#include "core/app/log.h"
#include "core/platform/settings_key_value_store.h"
#include "core/settings/app_settings.h"
#include "platform/x11/x11_connection.h"

#include <QApplication>
#include <QDir>
#include <QLocalSocket>

#include <cstdio>

namespace tessary {

namespace {

// Connects without sending anything: a running instance drops such a connection.
bool otherInstanceRunning()
{
    QLocalSocket socket;
    socket.connectToServer(SingleInstance::defaultServerName());
    return socket.waitForConnected(SingleInstance::Timeouts().connectMs);
}

std::vector<std::unique_ptr<SelfCheck>> makeChecks(const SelfCheckContext &context)
{
    std::vector<std::unique_ptr<SelfCheck>> checks;
    checks.push_back(std::make_unique<DisplayCheck>(context));
    checks.push_back(std::make_unique<WindowManagerCheck>(context));
    checks.push_back(std::make_unique<ShortcutsCheck>(context));
    checks.push_back(std::make_unique<KeyboardCheck>(context));
    checks.push_back(std::make_unique<SessionEndCheck>(context));
    checks.push_back(std::make_unique<TrayCheck>(context));
    checks.push_back(std::make_unique<ClipboardCheck>(context));
    checks.push_back(std::make_unique<DataFilesCheck>(context));
    checks.push_back(std::make_unique<LogFileCheck>(context));
    checks.push_back(std::make_unique<AppIndexCheck>(context));
    checks.push_back(std::make_unique<FileSearchCheck>(context));
    checks.push_back(std::make_unique<SystemCommandsCheck>());
    checks.push_back(std::make_unique<LoginItemCheck>());
    checks.push_back(std::make_unique<LayoutsCheck>(context));
    checks.push_back(std::make_unique<CalculatorCheck>());
    checks.push_back(std::make_unique<FuzzyCheck>());
    checks.push_back(std::make_unique<SnippetCheck>());
    return checks;
}

void write(const QByteArray &bytes) { std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout); }

} // namespace

int runSelfCheck(int argc, char **argv, bool json)
{
    XDisplayProbe display;
    std::optional<QString> displayProblem = display.problem();
    // Without a display the checks still run (and report it) on Qt's display-less platform.
    if (displayProblem)
        qputenv("QT_QPA_PLATFORM", "offscreen");
    else if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "xcb");

    QApplication app(argc, argv);
    display.close();
    QApplication::setOrganizationName(QStringLiteral("Tessary"));
    QApplication::setApplicationName(QStringLiteral("Tessary"));
    X11Connection *x11 = displayProblem ? nullptr : X11Connection::instance();
    if (!x11 && !displayProblem)
        displayProblem = QStringLiteral("Qt does not run on its X11 (xcb) platform here.");

    SettingsKeyValueStore defaults(SettingsKeyValueStore::Access::readOnly);
    const AppSettings settings(defaults);
    const SelfCheckContext context{x11, displayProblem.value_or(QString()), settings, otherInstanceRunning(),
        DataDirectory::defaultPath(), Log::defaultPath(), QDir::homePath()};
    SelfCheckRunner runner(makeChecks(context));

    const bool windowless = json || displayProblem;
    std::unique_ptr<SelfCheckWindow> window;
    if (windowless) {
        if (!json)
            std::fprintf(stderr, "tessary: %s The findings follow.\n", qPrintable(*displayProblem));
        QObject::connect(&runner, &SelfCheckRunner::finished, &app, [&runner, json] {
            write(json ? SelfCheckReport::json(runner) : SelfCheckReport::text(runner));
            QCoreApplication::exit(runner.anyFailed() ? 1 : 0);
        });
    } else {
        window = std::make_unique<SelfCheckWindow>(runner);
        window->show();
    }
    runner.start();
    const int status = QApplication::exec();
    return windowless ? status : (runner.anyFailed() ? 1 : 0);
}

} // namespace tessary

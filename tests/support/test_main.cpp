// Shared main: creates the Qt application object the code under test expects,
// except when ctest only asks for the list of tests (no display needed then).
#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#ifdef TESSARY_TEST_GUI
#include <QApplication>
using TestApplication = QApplication;
#else
#include <QCoreApplication>
using TestApplication = QCoreApplication;
#endif

#include <cstring>
#include <memory>

namespace {

// Takes "--tessary-display=:N" and "--tessary-wm=NAME" out of argv into
// DISPLAY and TESSARY_TEST_WM: the same test binary runs on the session of
// another window manager (child processes inherit the choice).
void takeSessionArguments(int &argc, char **argv)
{
    const struct {
        const char *prefix;
        const char *variable;
    } options[] = {{"--tessary-display=", "DISPLAY"}, {"--tessary-wm=", "TESSARY_TEST_WM"}};
    int kept = 1;
    for (int i = 1; i < argc; ++i) {
        bool taken = false;
        for (const auto &option : options) {
            const size_t length = std::strlen(option.prefix);
            if (std::strncmp(argv[i], option.prefix, length) == 0) {
                qputenv(option.variable, argv[i] + length);
                taken = true;
            }
        }
        if (!taken)
            argv[kept++] = argv[i];
    }
    argc = kept;
}

} // namespace

int main(int argc, char **argv)
{
    // Checked before GoogleTest takes its own flags out of argv.
    bool listOnly = false;
    for (int i = 1; i < argc; ++i)
        listOnly = listOnly || std::strcmp(argv[i], "--gtest_list_tests") == 0;
    takeSessionArguments(argc, argv);
    ::testing::InitGoogleMock(&argc, argv);
    if (listOnly)
        return RUN_ALL_TESTS();
    // Keep tests away from the real user's files.
    QStandardPaths::setTestModeEnabled(true);
    const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
    if (!runtime.isEmpty()) {
        QDir().mkpath(QString::fromLocal8Bit(runtime));
        QFile::setPermissions(
            QString::fromLocal8Bit(runtime), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    }
    TestApplication app(argc, argv);
    return RUN_ALL_TESTS();
}

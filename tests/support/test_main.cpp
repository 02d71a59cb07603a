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

int main(int argc, char **argv)
{
    // Checked before GoogleTest takes its own flags out of argv.
    bool listOnly = false;
    for (int i = 1; i < argc; ++i)
        listOnly = listOnly || std::strcmp(argv[i], "--gtest_list_tests") == 0;
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

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

#include <memory>

int main(int argc, char **argv)
{
    ::testing::InitGoogleMock(&argc, argv);
    // InitGoogleMock consumed the flag from argv; ask gtest instead.
    if (::testing::GTEST_FLAG(list_tests))
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

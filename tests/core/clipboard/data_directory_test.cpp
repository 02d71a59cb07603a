#include "core/app/data_directory.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <thread>

namespace tessary {
namespace {

TEST(DataDirectory, followsXdgDataHomeAndFallsBackForRelativeOrMissingValues)
{
    const QByteArray saved = qgetenv("XDG_DATA_HOME");
    const struct {
        const char *value;
        QString path;
    } cases[] = {
        {"/srv/data", QStringLiteral("/srv/data/Tessary")},
        {"relative/data", QDir::homePath() + QStringLiteral("/.local/share/Tessary")},
        {"", QDir::homePath() + QStringLiteral("/.local/share/Tessary")},
    };
    for (const auto &c : cases) {
        qputenv("XDG_DATA_HOME", c.value);
        EXPECT_EQ(DataDirectory::defaultPath(), c.path) << c.value;
    }
    qputenv("XDG_DATA_HOME", saved);
}

TEST(DataDirectory, writesPrivateFilesAtomicallyAndReportsFailure)
{
    QTemporaryDir temp;
    const QString folder = temp.path() + QStringLiteral("/a/b/Tessary");
    ASSERT_TRUE(DataDirectory::ensurePrivate(folder));
    const QString path = folder + QStringLiteral("/file.json");
    ASSERT_TRUE(DataDirectory::writePrivateFile(path, "first"));
    QFile::setPermissions(path, QFileDevice::Permissions(0x6644));
    ASSERT_TRUE(DataDirectory::writePrivateFile(path, "second"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("second"));
    EXPECT_EQ(QFileInfo(path).permissions() & QFileDevice::Permissions(0x0777), QFileDevice::Permissions(0x0600))
        << "a file made readable by others is private again after the next write";
    EXPECT_EQ(QDir(folder).entryList(QDir::Files), QStringList{QStringLiteral("file.json")}) << "no temporary left";

    EXPECT_FALSE(DataDirectory::writePrivateFile(temp.path() + QStringLiteral("/missing/file"), "x"));
    EXPECT_FALSE(DataDirectory::ensurePrivate(path + QStringLiteral("/below-a-file")));
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

TEST(DataDirectory, keepsAFewDistinctUnreadableCopiesPrivatelyBesideTheFile)
{
    QTemporaryDir temp;
    const QString path = temp.filePath(QStringLiteral("clipboard.json"));
    // What a copy cut short leaves: never taken for a copy, kept or compared.
    const QString interrupted = path + QStringLiteral(".unreadable-20991231-235959.Tmp123");
    ASSERT_TRUE(DataDirectory::writePrivateFile(interrupted, "first"));
    const auto first = DataDirectory::keepUnreadableCopy(path, "first");
    ASSERT_TRUE(first);
    EXPECT_TRUE(QFileInfo(*first).fileName().startsWith(QStringLiteral("clipboard.json.unreadable-")));
    EXPECT_EQ(QFileInfo(*first).permissions() & QFileDevice::Permissions(0x0777), QFileDevice::Permissions(0x0600));
    EXPECT_EQ(DataDirectory::keepUnreadableCopy(path, "first"), first) << "the same bytes are kept once";

    // Older copies, as earlier starts would have left them.
    for (const char *stamp : {"20200101-000000", "20200102-000000", "20200103-000000"})
        ASSERT_TRUE(
            DataDirectory::writePrivateFile(path + QStringLiteral(".unreadable-") + QLatin1String(stamp), stamp));
    const auto second = DataDirectory::keepUnreadableCopy(path, "second");
    ASSERT_TRUE(second);
    EXPECT_EQ(contents(*second), QByteArray("second"));
    QStringList left = QDir(temp.path()).entryList(QDir::Files, QDir::Name);
    EXPECT_TRUE(left.removeOne(QFileInfo(interrupted).fileName()));
    EXPECT_EQ(left.size(), DataDirectory::keptCopies);
    EXPECT_TRUE(left.contains(QFileInfo(*first).fileName())) << "the oldest go first";
    EXPECT_FALSE(left.contains(QStringLiteral("clipboard.json.unreadable-20200101-000000")));
}

TEST(DataDirectory, removesOnlyTheTemporariesOfInterruptedWrites)
{
    QTemporaryDir temp;
    const QStringList kept{QStringLiteral("clipboard.json"),
        QStringLiteral("clipboard.json.unreadable-20200101-000000"), QStringLiteral("0123456789abcdef01234567.png"),
        QStringLiteral("notes.txt.AbC123")};
    const QStringList removed{QStringLiteral("clipboard.json.AbC123"), QStringLiteral("snippets.json.x9Y8z7"),
        QStringLiteral("0123456789abcdef01234567.png.Qw3rTy"),
        QStringLiteral("snippets.json.unreadable-20200101-000000-123.Zx12Ab")};
    for (const QString &name : kept + removed)
        ASSERT_TRUE(DataDirectory::writePrivateFile(temp.filePath(name), "x"));
    DataDirectory::removeTemporaries(temp.path());
    QStringList expected = kept;
    expected.sort();
    EXPECT_EQ(QDir(temp.path()).entryList(QDir::Files, QDir::Name), expected);
}

// Without CAP_FOWNER even root cannot change the mode of a folder it does not
// own, as on file systems without Unix permissions. Capabilities are per thread.
bool dropFileOwnerCapability()
{
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct data[2] = {};
    if (syscall(SYS_capget, &header, data) != 0)
        return false;
    data[0].effective &= ~(1U << CAP_FOWNER);
    return syscall(SYS_capset, &header, data) == 0;
}

TEST(DataDirectory, aFolderWhoseModeCannotBeChangedStillReceivesTheFile)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "needs root to hand the folder to another user";
    QTemporaryDir temp;
    const QString folder = temp.filePath(QStringLiteral("foreign"));
    ASSERT_TRUE(QDir().mkdir(folder));
    ASSERT_TRUE(QFile::setPermissions(folder, QFileDevice::Permissions(0x7777)));
    ASSERT_EQ(::chown(QFile::encodeName(folder).constData(), 65534, 65534), 0);
    bool ensured = false;
    bool written = false;
    std::thread([&] {
        if (!dropFileOwnerCapability())
            return;
        ensured = DataDirectory::ensurePrivate(folder);
        written = DataDirectory::writePrivateFile(folder + QStringLiteral("/clipboard.json"), "[]");
    }).join();
    EXPECT_TRUE(ensured);
    EXPECT_TRUE(written);
    EXPECT_EQ(contents(folder + QStringLiteral("/clipboard.json")), QByteArray("[]"));
    EXPECT_EQ(QFileInfo(folder).permissions() & QFileDevice::Permissions(0x0777), QFileDevice::Permissions(0x0777))
        << "the mode really could not be changed";
}

} // namespace
} // namespace tessary

#include "core/app/data_directory.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

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

} // namespace
} // namespace tessary

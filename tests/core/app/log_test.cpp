#include "core/app/log.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTimeZone>

#include <gtest/gtest.h>

namespace tessary {
namespace {

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

const QDateTime when(QDate(2026, 11, 16), QTime(21, 42, 37), QTimeZone::utc());

TEST(LogFile, firstWriteCreatesTheFileWithOneLine)
{
    QTemporaryDir dir;
    const LogFile log(dir.filePath(QStringLiteral("Tessary.log")));
    log.write(QStringLiteral("shortcut fired: leftHalf"), when);
    EXPECT_EQ(contents(log.path()), "2026-11-16 21:42:37 +0000 shortcut fired: leftHalf\n");
}

TEST(LogFile, appendsInOrderAndKeepsEmbeddedLineFeeds)
{
    QTemporaryDir dir;
    const LogFile log(dir.filePath(QStringLiteral("Tessary.log")));
    log.write(QStringLiteral("one"), when);
    log.write(QStringLiteral("two\nlines"), when.addSecs(1));
    EXPECT_EQ(contents(log.path()),
        "2026-11-16 21:42:37 +0000 one\n"
        "2026-11-16 21:42:38 +0000 two\nlines\n");
}

TEST(LogFile, timestampIsUtcWhateverTheInputZone)
{
    const QDateTime local = when.toTimeZone(QTimeZone(3600 * 5));
    EXPECT_EQ(LogFile::formatLine(QStringLiteral("x"), local), QStringLiteral("2026-11-16 21:42:37 +0000 x\n"));
}

TEST(LogFile, aMissingFolderLosesTheMessageQuietly)
{
    QTemporaryDir dir;
    const LogFile log(dir.filePath(QStringLiteral("absent/Tessary.log")));
    log.write(QStringLiteral("lost"), when);
    EXPECT_FALSE(QFile::exists(log.path()));
}

TEST(Log, defaultPathFollowsXdgStateHome)
{
#ifndef Q_OS_MACOS
    qputenv("XDG_STATE_HOME", "/tmp/state-root");
    EXPECT_EQ(Log::defaultPath(), QStringLiteral("/tmp/state-root/Tessary/Tessary.log"));
    qunsetenv("XDG_STATE_HOME");
    EXPECT_TRUE(Log::defaultPath().endsWith(QStringLiteral("/.local/state/Tessary/Tessary.log")));
#endif
}

} // namespace
} // namespace tessary

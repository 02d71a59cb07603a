#include "platform/x11/launcher/detached_process_launcher.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace tessary {
namespace {

using namespace Qt::StringLiterals;

QString program(const QString &name)
{
    const QString path = QStandardPaths::findExecutable(name);
    EXPECT_FALSE(path.isEmpty()) << name.toStdString() << " is not installed";
    return path;
}

TEST(DetachedProcessLauncher, startPassesArgumentsWithoutAShell)
{
    QTemporaryDir directory;
    const QString tricky = directory.filePath(u"a b;$(echo x) *'\"|&"_s);
    DetachedProcessLauncher launcher;
    ASSERT_TRUE(launcher.start(program(u"touch"_s), {tricky}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(tricky); }, 5000));
    EXPECT_EQ(QDir(directory.path()).entryList(QDir::Files | QDir::NoDotAndDotDot).size(), 1);
}

TEST(DetachedProcessLauncher, startFailsForAProgramThatCannotRun)
{
    QTemporaryDir directory;
    QFile notExecutable(directory.filePath(u"script"_s));
    ASSERT_TRUE(notExecutable.open(QIODevice::WriteOnly));
    notExecutable.write("#!/bin/sh\n");
    notExecutable.close();

    DetachedProcessLauncher launcher;
    EXPECT_FALSE(launcher.start(directory.filePath(u"missing"_s), {}));
    EXPECT_FALSE(launcher.start(notExecutable.fileName(), {}));
}

TEST(DetachedProcessLauncher, outputGivesStandardOutputOfASuccessfulRun)
{
    DetachedProcessLauncher launcher;
    EXPECT_EQ(launcher.output(program(u"printf"_s), {u"%s|%s"_s, u"a b"_s, u"$HOME"_s}), QByteArray("a b|$HOME"));
    EXPECT_EQ(launcher.output(program(u"printf"_s), {QString()}), QByteArray());
    EXPECT_EQ(launcher.output(program(u"false"_s), {}), std::nullopt);
    EXPECT_EQ(launcher.output(u"/nonexistent/program"_s, {}), std::nullopt);
}

TEST(DetachedProcessLauncher, outputGivesUpOnAProgramThatDoesNotFinish)
{
    DetachedProcessLauncher launcher;
    EXPECT_EQ(launcher.output(program(u"sleep"_s), {u"30"_s}), std::nullopt);
}

} // namespace
} // namespace tessary

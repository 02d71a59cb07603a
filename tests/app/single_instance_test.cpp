#include "app/single_instance.h"

#include <QDir>
#include <QSignalSpy>
#include <QTest>
#include <QtConcurrent>

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace tessary {
namespace {

QString uniqueName()
{
    return QStringLiteral("tessary-test-%1-%2").arg(QCoreApplication::applicationPid()).arg(std::rand());
}

// A later start, run off the main thread so this thread's event loop can serve it.
bool laterStartClaims(const QString &name, const QStringList &arguments)
{
    QFuture<bool> claimed = QtConcurrent::run([name, arguments] {
        SingleInstance later(name);
        return later.claimOrForward(arguments);
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return claimed.isFinished(); }, 10000));
    return claimed.result();
}

TEST(SingleInstance, aLaterStartHandsOverItsArguments)
{
    const QString name = uniqueName();
    SingleInstance first(name);
    QSignalSpy forwarded(&first, &SingleInstance::forwarded);
    ASSERT_TRUE(first.claimOrForward({}));

    const QList<QStringList> cases = {
        {},
        {QStringLiteral("--show"), QStringLiteral("clipboard")},
        {QStringLiteral("--show"), QStringLiteral("launcher"), QString::fromUtf16(u"two words \u00E9 \"quoted\"")},
    };
    for (const QStringList &arguments : cases) {
        forwarded.clear();
        EXPECT_FALSE(laterStartClaims(name, arguments));
        ASSERT_TRUE(QTest::qWaitFor([&] { return forwarded.size() == 1; }));
        EXPECT_EQ(forwarded.first().first().toStringList(), arguments);
    }
}

TEST(SingleInstance, theSocketOfACrashedInstanceIsTakenOver)
{
    const QString name = uniqueName();
    // What a killed instance leaves behind: a socket file nobody listens on.
    const QByteArray path = QDir(QDir::tempPath()).filePath(name).toLocal8Bit();
    const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.constData(), sizeof(address.sun_path) - 1);
    ASSERT_EQ(::bind(fd, reinterpret_cast<sockaddr *>(&address), sizeof(address)), 0);
    ::close(fd);
    ASSERT_TRUE(QFile::exists(QString::fromLocal8Bit(path)));

    SingleInstance next(name);
    EXPECT_TRUE(next.claimOrForward({}));
    EXPECT_FALSE(laterStartClaims(name, {}));
}

} // namespace
} // namespace tessary

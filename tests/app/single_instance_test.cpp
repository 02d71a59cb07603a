#include "app/single_instance.h"

#include <QDir>
#include <QSignalSpy>
#include <QTest>
#include <QtConcurrent>

#include <gtest/gtest.h>

#include <memory>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace tessary {
namespace {

using Claim = SingleInstance::Claim;

QString uniqueName()
{
    return QStringLiteral("tessary-test-%1-%2").arg(QCoreApplication::applicationPid()).arg(std::rand());
}

QString socketPath(const QString &name) { return QDir(QDir::tempPath()).filePath(name); }

// A socket file at `name`'s path; listening (with nobody ever accepting) or not.
// What a killed instance leaves, or a child that inherited its socket.
int leftoverSocket(const QString &name, bool listening)
{
    const QByteArray path = socketPath(name).toLocal8Bit();
    const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.constData(), sizeof(address.sun_path) - 1);
    EXPECT_EQ(::bind(fd, reinterpret_cast<sockaddr *>(&address), sizeof(address)), 0);
    if (listening) {
        EXPECT_EQ(::listen(fd, 4), 0);
    }
    return fd;
}

// A later start, run off the main thread so this thread's event loop can serve it.
Claim laterStart(const QString &name, const QStringList &arguments, SingleInstance::Timeouts timeouts = {})
{
    QFuture<Claim> claim = QtConcurrent::run([name, arguments, timeouts] {
        SingleInstance later(name, timeouts);
        return later.claimOrForward(arguments);
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return claim.isFinished(); }, 20000));
    return claim.result();
}

TEST(SingleInstance, aLaterStartHandsOverItsArguments)
{
    const QString name = uniqueName();
    SingleInstance first(name);
    QSignalSpy forwarded(&first, &SingleInstance::forwarded);
    ASSERT_EQ(first.claimOrForward({}), Claim::claimed);

    const QList<QStringList> cases = {
        {},
        {QStringLiteral("--show"), QStringLiteral("clipboard")},
        {QStringLiteral("--show"), QStringLiteral("launcher"), QString::fromUtf16(u"two words \u00E9 \"quoted\"")},
    };
    for (const QStringList &arguments : cases) {
        forwarded.clear();
        EXPECT_EQ(laterStart(name, arguments), Claim::forwarded);
        ASSERT_TRUE(QTest::qWaitFor([&] { return forwarded.size() == 1; }));
        EXPECT_EQ(forwarded.first().first().toStringList(), arguments);
    }
}

TEST(SingleInstance, whatADeadInstanceLeftIsTakenOver)
{
    for (const bool listening : {false, true}) {
        SCOPED_TRACE(listening ? "a listener nobody serves" : "a socket file");
        const QString name = uniqueName();
        const int leftover = leftoverSocket(name, listening);
        SingleInstance next(name);
        EXPECT_EQ(next.claimOrForward({}), Claim::claimed);
        EXPECT_EQ(laterStart(name, {}), Claim::forwarded);
        ::close(leftover);
    }
}

TEST(SingleInstance, anInstanceThatHoldsTheLockButNeverAnswersIsNamedNotReplaced)
{
    const QString name = uniqueName();
    InstanceLock running(socketPath(name) + QStringLiteral(".lock"));
    ASSERT_EQ(running.tryLock(), InstanceLock::State::acquired);
    const int hung = leftoverSocket(name, true);

    SingleInstance next(name, {.connectMs = 200, .acknowledgeMs = 200, .settleMs = 200});
    EXPECT_EQ(next.claimOrForward({}), Claim::unanswered);
    EXPECT_EQ(next.holderPid(), QCoreApplication::applicationPid());
    ::close(hung);
}

TEST(SingleInstance, aStartWaitsForAnEndingInstanceThenTakesOver)
{
    const QString name = uniqueName();
    // Ending: the lock still held while the last writes land, no longer listening.
    auto ending = std::make_unique<InstanceLock>(socketPath(name) + QStringLiteral(".lock"));
    ASSERT_EQ(ending->tryLock(), InstanceLock::State::acquired);
    QTimer::singleShot(300, [&ending] { ending.reset(); });
    EXPECT_EQ(laterStart(name, {}), Claim::claimed);
}

} // namespace
} // namespace tessary

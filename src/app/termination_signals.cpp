#include "app/termination_signals.h"

#include "app/app_logging.h"

#include <cerrno>
#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace tessary {

namespace {

constexpr int handledSignals[] = {SIGTERM, SIGINT, SIGHUP};

// Written by the handler, which may do nothing but async-signal-safe calls.
volatile std::sig_atomic_t writeEnd = -1;

void onSignal(int signalNumber)
{
    const int savedErrno = errno;
    const auto byte = static_cast<unsigned char>(signalNumber);
    // Full pipe: a signal is already pending, which is enough.
    [[maybe_unused]] const ssize_t written = ::write(writeEnd, &byte, 1);
    errno = savedErrno;
}

} // namespace

TerminationSignals::TerminationSignals(QObject *parent)
    : QObject(parent)
{
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, m_fds) != 0) {
        qCWarning(lcApp) << "cannot watch for termination signals";
        return;
    }
    writeEnd = m_fds[0];
    m_notifier = new QSocketNotifier(m_fds[1], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &TerminationSignals::onReadable);
    struct sigaction action = {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (int signalNumber : handledSignals)
        ::sigaction(signalNumber, &action, nullptr);
}

TerminationSignals::~TerminationSignals()
{
    if (m_fds[0] < 0)
        return;
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    sigemptyset(&action.sa_mask);
    for (int signalNumber : handledSignals)
        ::sigaction(signalNumber, &action, nullptr);
    writeEnd = -1;
    delete m_notifier;
    ::close(m_fds[0]);
    ::close(m_fds[1]);
}

void TerminationSignals::onReadable()
{
    unsigned char byte = 0;
    while (::read(m_fds[1], &byte, 1) == 1)
        Q_EMIT received(byte);
}

} // namespace tessary

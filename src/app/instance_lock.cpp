#include "app/instance_lock.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace tessary {

InstanceLock::InstanceLock(QString path)
    : m_path(std::move(path))
{
}

InstanceLock::~InstanceLock()
{
    if (m_fd >= 0)
        ::close(m_fd);
}

InstanceLock::State InstanceLock::tryLock()
{
    if (m_locked)
        return State::acquired;
    if (m_fd < 0) {
        m_fd = ::open(QFile::encodeName(m_path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        if (m_fd < 0)
            return State::unavailable;
    }
    if (::flock(m_fd, LOCK_EX | LOCK_NB) != 0)
        return errno == EWOULDBLOCK ? State::heldElsewhere : State::unavailable;
    m_locked = true;
    const QByteArray pid = QByteArray::number(QCoreApplication::applicationPid()) + '\n';
    // The pid only words a later start's message; the lock holds without it.
    [[maybe_unused]] const bool named
        = ::ftruncate(m_fd, 0) == 0 && ::pwrite(m_fd, pid.constData(), size_t(pid.size()), 0) == pid.size();
    return State::acquired;
}

qint64 InstanceLock::holderPid() const
{
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.read(32).trimmed().toLongLong();
}

} // namespace tessary

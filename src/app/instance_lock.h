#pragma once

#include <QString>

namespace tessary {

// An exclusive lock on a file, held until this object is destroyed or the
// process ends. The kernel drops it however the process ends (kill -9
// included), so it is never stale; children do not inherit it.
class InstanceLock {
public:
    explicit InstanceLock(QString path);
    ~InstanceLock();

    InstanceLock(const InstanceLock &) = delete;
    InstanceLock &operator=(const InstanceLock &) = delete;

    enum class State { acquired, heldElsewhere, unavailable };
    // Never waits. Once acquired, the file names this process.
    State tryLock();

    // The process that holds the lock, 0 when unknown.
    qint64 holderPid() const;

    const QString &path() const { return m_path; }

private:
    QString m_path;
    int m_fd = -1;
    bool m_locked = false;
};

} // namespace tessary

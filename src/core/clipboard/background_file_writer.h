#pragma once

#include <QByteArray>
#include <QString>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <thread>

namespace tessary {

// Writes and removes files in call order on a thread of its own, so that the
// caller never waits for the disk (each atomic write syncs it). A write still
// queued is dropped when the same path is written again, and the newer write
// goes to the back: whatever was asked for before it is on disk first.
// Files are written atomically and private to the user; failures are logged
// and otherwise ignored. Destruction finishes the queued work first, and so
// does the process's exit (the X11 platform exits when the display goes away).
class BackgroundFileWriter {
public:
    BackgroundFileWriter();
    ~BackgroundFileWriter();

    BackgroundFileWriter(const BackgroundFileWriter &) = delete;
    BackgroundFileWriter &operator=(const BackgroundFileWriter &) = delete;

    void write(const QString &path, QByteArray bytes);
    void remove(const QString &path);
    // The bytes of the latest write of `path` still waiting for the disk; none
    // when there is none or a removal of `path` was asked for after it.
    std::optional<QByteArray> pending(const QString &path) const;
    // Returns once everything asked for so far is on disk (or has failed).
    void waitForIdle();
    // waitForIdle of every writer alive; for the moment before the process ends.
    static void waitForAllIdle();

private:
    struct Operation {
        QString path;
        // None: remove the file.
        std::optional<QByteArray> bytes;
    };

    void run();

    mutable std::mutex m_mutex;
    std::condition_variable m_wake;
    std::condition_variable m_idle;
    std::deque<Operation> m_queue;
    bool m_busy = false;
    bool m_stopping = false;
    std::thread m_thread;
};

} // namespace tessary

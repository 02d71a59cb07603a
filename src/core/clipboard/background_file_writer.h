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
// queued is replaced by a newer write to the same path. Files are written
// atomically and private to the user; failures are logged and otherwise
// ignored. Destruction finishes the queued work first.
class BackgroundFileWriter {
public:
    BackgroundFileWriter();
    ~BackgroundFileWriter();

    BackgroundFileWriter(const BackgroundFileWriter &) = delete;
    BackgroundFileWriter &operator=(const BackgroundFileWriter &) = delete;

    void write(const QString &path, QByteArray bytes);
    void remove(const QString &path);
    // Returns once everything asked for so far is on disk (or has failed).
    void waitForIdle();

private:
    struct Operation {
        QString path;
        // None: remove the file.
        std::optional<QByteArray> bytes;
    };

    void run();

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::condition_variable m_idle;
    std::deque<Operation> m_queue;
    bool m_busy = false;
    bool m_stopping = false;
    std::thread m_thread;
};

} // namespace tessary

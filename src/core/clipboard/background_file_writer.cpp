#include "core/clipboard/background_file_writer.h"

#include "core/app/data_directory.h"

#include <QFile>
#include <QLoggingCategory>

#include <algorithm>
#include <cstdlib>
#include <set>

Q_LOGGING_CATEGORY(lcFileWriter, "tessary.clipboard.files")

namespace tessary {

namespace {

// Every writer alive, so that exit() from anywhere still lands queued work.
struct Registry {
    std::mutex mutex;
    std::set<BackgroundFileWriter *> writers;
};

Registry &registry()
{
    // Never destroyed: exit handlers may run after static destructors.
    static auto *instance = new Registry;
    return *instance;
}

} // namespace

BackgroundFileWriter::BackgroundFileWriter()
    : m_thread([this] { run(); })
{
    static const bool hooked = std::atexit(&BackgroundFileWriter::waitForAllIdle) == 0;
    if (!hooked)
        qCWarning(lcFileWriter) << "queued writes may be lost at exit";
    std::lock_guard lock(registry().mutex);
    registry().writers.insert(this);
}

BackgroundFileWriter::~BackgroundFileWriter()
{
    {
        std::lock_guard lock(registry().mutex);
        registry().writers.erase(this);
    }
    {
        std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

void BackgroundFileWriter::write(const QString &path, QByteArray bytes)
{
    {
        std::lock_guard lock(m_mutex);
        const auto latest = std::find_if(
            m_queue.rbegin(), m_queue.rend(), [&](const Operation &queued) { return queued.path == path; });
        // A removal asked for in between must still happen, so only a write directly superseded goes.
        if (latest != m_queue.rend() && latest->bytes)
            m_queue.erase(std::next(latest).base());
        m_queue.push_back({path, std::move(bytes)});
    }
    m_wake.notify_one();
}

void BackgroundFileWriter::remove(const QString &path)
{
    {
        std::lock_guard lock(m_mutex);
        m_queue.push_back({path, std::nullopt});
    }
    m_wake.notify_one();
}

std::optional<QByteArray> BackgroundFileWriter::pending(const QString &path) const
{
    std::lock_guard lock(m_mutex);
    const auto latest
        = std::find_if(m_queue.rbegin(), m_queue.rend(), [&](const Operation &queued) { return queued.path == path; });
    return latest != m_queue.rend() ? latest->bytes : std::nullopt;
}

void BackgroundFileWriter::waitForIdle()
{
    std::unique_lock lock(m_mutex);
    m_idle.wait(lock, [this] { return m_queue.empty() && !m_busy; });
}

void BackgroundFileWriter::waitForAllIdle()
{
    std::lock_guard lock(registry().mutex);
    for (BackgroundFileWriter *writer : registry().writers)
        writer->waitForIdle();
}

void BackgroundFileWriter::run()
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_wake.wait(lock, [this] { return m_stopping || !m_queue.empty(); });
        if (m_queue.empty())
            return;
        Operation operation = std::move(m_queue.front());
        m_queue.pop_front();
        m_busy = true;
        lock.unlock();
        if (operation.bytes) {
            if (!DataDirectory::writePrivateFile(operation.path, *operation.bytes))
                qCWarning(lcFileWriter) << "cannot write" << operation.path;
        } else if (QFile::exists(operation.path) && !QFile::remove(operation.path)) {
            qCWarning(lcFileWriter) << "cannot remove" << operation.path;
        }
        lock.lock();
        m_busy = false;
        if (m_queue.empty())
            m_idle.notify_all();
    }
}

} // namespace tessary

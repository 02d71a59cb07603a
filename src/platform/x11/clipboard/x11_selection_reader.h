#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <xcb/xcb.h>

#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

namespace tessary {

// Reads the CLIPBOARD selection on a thread and an X connection of its own,
// so that a slow owner or a transfer of many megabytes (INCR) never holds the
// main thread. Reads run one after another in the order they were asked for.
class X11SelectionReader {
public:
    // What one owner offered, as far as it was read.
    struct Raw {
        // The owner's target names.
        QStringList targets = {};
        QList<QUrl> fileUrls = {};
        std::optional<QString> text = {};
        // Encoded picture bytes (PNG when offered); read only when there are
        // neither file URLs nor a text that has more than white space.
        QByteArray imageBytes = {};
    };
    enum class Outcome {
        read,
        // Nobody owns the selection, or it changed hands before the read reached its owner.
        nothing,
        // The owner is a window of `ownConnection`: this process's own write.
        own,
    };
    using Done = std::function<void(Outcome, Raw)>;
    // Everything the history keeps, or only the text.
    enum class Want { everything, text };

    // Texts and file lists longer than this arrive cut at it.
    static constexpr qsizetype maxTextBytes = 4 * 1024 * 1024;
    // A larger picture could not be decoded within the pixel limit anyway.
    static constexpr qsizetype maxImageBytes = 320 * 1024 * 1024;
    // An owner that goes this long without answering has abandoned the transfer.
    static constexpr int ownerTimeoutMs = 5000;

    // Connects to `displayName`; windows created over `ownConnection` count as this process's.
    X11SelectionReader(const QByteArray &displayName, xcb_connection_t *ownConnection);
    // Abandons a transfer in progress and drops the reads not yet started.
    ~X11SelectionReader();
    X11SelectionReader(const X11SelectionReader &) = delete;
    X11SelectionReader &operator=(const X11SelectionReader &) = delete;

    // Queues a read. With a target in `refusedTargets` only the targets are
    // read. `done` runs on the reader's thread.
    void read(QSet<QString> refusedTargets, Want want, Done done);

private:
    struct Job {
        QSet<QString> refusedTargets;
        Want want = Want::everything;
        Done done;
    };

    void run();
    void readOnce(const Job &job);
    xcb_window_t owner();
    // The owner's answer for one target; none when it refuses or stops answering.
    std::optional<QByteArray> convert(xcb_atom_t target, qsizetype limit);
    std::optional<QByteArray> receiveIncrementally(qsizetype expected, qsizetype limit);
    // The next event that `matches`, waiting at most ownerTimeoutMs; none on timeout or when stopping.
    xcb_generic_event_t *waitForEvent(const std::function<bool(const xcb_generic_event_t *)> &matches);
    QStringList targetNames(const QByteArray &atoms);
    xcb_atom_t atom(const QByteArray &name);

    xcb_connection_t *m_connection = nullptr;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    // The owner of the read in progress, and whether another took over before a request reached it.
    xcb_window_t m_owner = XCB_WINDOW_NONE;
    bool m_ownerChanged = false;
    uint32_t m_ownIdBase = 0;
    uint32_t m_ownIdMask = 0;
    QHash<QByteArray, xcb_atom_t> m_atoms;
    QHash<xcb_atom_t, QString> m_atomNames;
    QList<QByteArray> m_decodableImageTypes;

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<Job> m_jobs;
    std::atomic<bool> m_stopping = false;
    std::thread m_thread;
};

} // namespace tessary

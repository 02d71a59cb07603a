#pragma once

#include "core/clipboard/background_file_writer.h"
#include "core/clipboard/clip_item.h"
#include "core/platform/pasteboard.h"

#include <QObject>
#include <QSet>
#include <QTimer>

#include <deque>
#include <functional>
#include <memory>
#include <optional>

namespace tessary {

class Workspace;

// The clipboard history: records each new copy on the pasteboard unless a
// skip rule applies, keeps it newest first, folds repeated copies, prunes by
// age and count (pinned entries exempt) and persists it in `directory` as
// "clipboard.json" plus one PNG per distinct image under "images". Files and
// folders it creates are private to the user. Main thread only; the
// pasteboard must outlive the store.
class ClipboardStore : public QObject {
    Q_OBJECT

public:
    using FrontAppProvider = std::function<std::optional<QString>()>;

    static constexpr qint64 maxTextBytes = 1'000'000;
    static constexpr qint64 maxPngBytes = 25'000'000;
    static constexpr int pollIntervalMs = 500;
    static constexpr int defaultMaxItems = 200;
    static constexpr int defaultRetentionDays = 30;

    // A copy offering any of these types is never recorded (password
    // managers' concealed data, transient and generated content).
    static const QSet<QString> &skipTypes();

    // Remembers the pasteboard's current change count (what is on it now is
    // not recorded), creates `directory`/"images" and loads the history. An
    // undecodable history file is kept beside it (DataDirectory::keepUnreadableCopy)
    // and the history starts empty.
    // Nothing is polled until startMonitoring.
    ClipboardStore(QString directory, Pasteboard &pasteboard, QObject *parent = nullptr);
    ~ClipboardStore() override;

    // Newest first.
    const QList<ClipItem> &items() const { return m_items; }
    const QString &directory() const { return m_directory; }
    QString imagesDirectory() const;
    QString historyFilePath() const;

    // The user's pause switch; not persisted.
    bool paused() const { return m_paused; }
    void setPaused(bool paused);
    // The settings. A lower cap or retention takes effect at the next recorded copy.
    bool enabled = true;
    int maxItems = defaultMaxItems;
    // 0 or less keeps entries forever.
    int retentionDays = defaultRetentionDays;
    // Application ids whose copies are never recorded.
    QSet<QString> excludedApps;
    // Asked once per change, when it is polled; none means unknown.
    FrontAppProvider frontAppProvider;
    // The id of `workspace`'s frontmost application; the workspace must outlive the provider.
    static FrontAppProvider frontAppProviderFor(const Workspace &workspace);

    qint64 lastChange() const { return m_lastChange; }
    qint64 ignoredChange() const { return m_ignoreChange; }
    // After this process wrote to the pasteboard outside `copy`: the current
    // change is its own and is neither recorded nor reconsidered.
    void ignoreCurrentChange();

    // Polls every 0.5 s and at once whenever the pasteboard reports a change.
    // Calling it again restarts the timer.
    void startMonitoring();
    // One polling step; the only operation that records copies. The content
    // is recorded once the pasteboard has read it (a picture: decoded it),
    // which may be later, but always in the order of the changes.
    void poll();

    // Flips `pinned` of the stored entry equal to `item` in every field; none: nothing happens.
    void togglePin(const ClipItem &item);
    // Deletes the entries with `item`'s id and its image file when no entry uses it any more.
    void remove(const ClipItem &item);
    // Deletes every entry, or every unpinned one, and the image files only
    // they used; copies still being read are not recorded.
    void clear(bool keepPinned);
    // Entries containing every space-separated word of `query`, case-insensitively;
    // pinned matches first, each group in history order. No words: everything.
    QList<ClipItem> search(const QString &query) const;
    // Puts the entry's content back on the pasteboard without touching the
    // history; the next poll records nothing. Files go as plain text paths
    // when `plainTextOnly`. An image whose file cannot be read leaves the
    // pasteboard empty; one still on its way to the disk is not waited for.
    void copy(const ClipItem &item, bool plainTextOnly);

    // Files are written in the background; this returns once the history
    // file and the images on disk match `items`.
    void waitForSaved();

    // SHA-256 of the kind word's UTF-8 bytes followed by `content`, as 64 lower-case hex digits.
    static QString hash(const QString &kindWord, const QByteArray &content);
    static QString hash(const QString &kindWord, const QString &text);

Q_SIGNALS:
    // Around every change of `items`; observers hear of it before the file
    // is rewritten, which waits for the disk.
    void itemsAboutToChange();
    void itemsChanged();
    void pausedChanged(bool paused);

private:
    struct Candidate;
    struct PendingCopy;

    // Consumes a new change; false when it is not to be read.
    bool shouldReadCurrentChange(std::optional<QString> &sourceApp);
    void resolve(const std::shared_ptr<PendingCopy> &copy, std::optional<PasteboardContent> content);
    // A large picture is hashed away from the main thread.
    void resolveImage(const std::shared_ptr<PendingCopy> &copy, PasteboardImage image);
    // Records the copies read so far, up to the first one still being read.
    void recordReadCopies();
    void record(Candidate candidate, std::optional<QString> sourceApp);
    void enforceLimits();
    void removeWhere(const std::function<bool(const ClipItem &)> &predicate);
    void deleteImageIfUnused(const ClipItem &item);
    bool isImageInUse(const QString &imageFile) const;
    void load();
    void save();

    QString m_directory;
    Pasteboard &m_pasteboard;
    QList<ClipItem> m_items;
    bool m_paused = false;
    qint64 m_lastChange = 0;
    qint64 m_ignoreChange = -1;
    // Copies being read, oldest first.
    std::deque<std::shared_ptr<PendingCopy>> m_pending;
    QTimer m_timer;
    BackgroundFileWriter m_files;
};

} // namespace tessary

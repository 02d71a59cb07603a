#pragma once

#include "core/platform/file_search_backend.h"

#include <QDateTime>
#include <QObject>
#include <QSet>

#include <atomic>
#include <memory>
#include <vector>

namespace tessary {

// File search for desktops without a file index: a bounded walk of the home
// folder on the global thread pool (its own file system only), names matched
// ignoring case and accents, most recently used (read or written) first. One walk serves the searches of
// the next half minute, so typing does not walk the disk per keystroke.
class HomeWalkFileSearch final : public QObject, public FileSearchBackend {
    Q_OBJECT

public:
    struct Bounds {
        int maxEntries = 200000; // files and folders looked at per walk
        int maxDepth = 12;       // folder levels below home
        int maxResults = 200;    // paths handed back per search
        int reuseSeconds = 30;   // age up to which a walk answers new searches
    };

    explicit HomeWalkFileSearch(QString home, QObject *parent = nullptr);
    HomeWalkFileSearch(QString home, Bounds bounds, QObject *parent = nullptr);
    ~HomeWalkFileSearch() override;

    void start(const QString &text, std::function<void(QStringList paths)> finished) override;
    void stop() override;

    // Case-folded, with combining marks dropped ("Résumé" → "resume").
    static QString folded(const QString &text);
    // The mount points strictly below `home` in a /proc/self/mountinfo text.
    static QSet<QString> mountPointsBelow(const QByteArray &mountInfo, const QString &home);

    struct Item {
        QString path;
        QString foldedName;
        qint64 usedMsecs;
    };
    using Snapshot = std::vector<Item>;

private:
    struct Answer {
        std::shared_ptr<const Snapshot> snapshot;
        QStringList paths;
    };

    static std::shared_ptr<const Snapshot> walk(
        const QString &home, const Bounds &bounds, const std::atomic_bool &cancelled);
    static QStringList match(const Snapshot &snapshot, const QString &foldedText, int maxResults);

    const QString m_home;
    const Bounds m_bounds;
    std::shared_ptr<std::atomic_bool> m_cancelled;
    std::shared_ptr<const Snapshot> m_snapshot;
    QDateTime m_snapshotTime;
};

} // namespace tessary

#pragma once

#include <QCache>
#include <QObject>
#include <QPixmap>
#include <QSet>
#include <QString>

#include <optional>

namespace tessary {

// Square thumbnails of picture files, decoded and cut to fill the square on
// the thread pool so that scrolling never waits for a disk or a decoder. At
// most `capacity` thumbnails are kept; the least recently used go first and
// are decoded again when asked for. Main thread only.
class ThumbnailCache : public QObject {
    Q_OBJECT

public:
    static constexpr int capacity = 200;

    // `side` in device pixels.
    explicit ThumbnailCache(int side, QObject *parent = nullptr);

    enum class State { ready, loading, missing };
    // The thumbnail of `path` when decoded; otherwise starts decoding it (once)
    // and says whether that is under way or the file cannot be read.
    State lookup(const QString &path, QPixmap &thumbnail);

    int side() const { return m_side; }

Q_SIGNALS:
    // A thumbnail asked for by lookup is decoded, or its file turned out unreadable.
    void finished(const QString &path);

private:
    int m_side;
    QCache<QString, QPixmap> m_thumbnails;
    QSet<QString> m_loading;
    QSet<QString> m_missing;
};

} // namespace tessary

#include "ui/clipboard/thumbnail_cache.h"

#include "core/launcher/background_task.h"

#include <QImage>
#include <QImageReader>

#include <algorithm>
#include <cmath>

namespace tessary {

namespace {

// Scaled so the shorter side fills the square, the middle kept; null when unreadable.
QImage decodeFilling(const QString &path, int side)
{
    QImageReader reader(path);
    const QSize full = reader.size();
    if (full.isEmpty())
        return {};
    const double factor = std::max(double(side) / full.width(), double(side) / full.height());
    const QSize scaled(
        std::max(side, int(std::ceil(full.width() * factor))), std::max(side, int(std::ceil(full.height() * factor))));
    reader.setScaledSize(scaled);
    reader.setScaledClipRect(QRect((scaled.width() - side) / 2, (scaled.height() - side) / 2, side, side));
    return reader.read();
}

} // namespace

ThumbnailCache::ThumbnailCache(int side, QObject *parent)
    : QObject(parent)
    , m_side(side)
    , m_thumbnails(capacity)
{
}

ThumbnailCache::State ThumbnailCache::lookup(const QString &path, QPixmap &thumbnail)
{
    if (const QPixmap *cached = m_thumbnails.object(path)) {
        thumbnail = *cached;
        return State::ready;
    }
    if (m_missing.contains(path))
        return State::missing;
    if (!m_loading.contains(path)) {
        m_loading.insert(path);
        runInBackground(
            this, [path, side = m_side] { return decodeFilling(path, side); },
            [this, path](const QImage &image) {
                m_loading.remove(path);
                if (image.isNull())
                    m_missing.insert(path);
                else
                    m_thumbnails.insert(path, new QPixmap(QPixmap::fromImage(image)));
                Q_EMIT finished(path);
            });
    }
    return State::loading;
}

} // namespace tessary

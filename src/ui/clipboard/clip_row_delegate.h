#pragma once

#include "core/clipboard/relative_date_formatter.h"

#include <QHash>
#include <QPixmap>
#include <QStyledItemDelegate>

namespace tessary {

class ClipPopupModel;
class ClipListModel;
class ThumbnailCache;

// Draws one history row: thumbnail or kind symbol, the title on up to two
// lines, source and relative date, and the pin; the popup model's selection
// is highlighted. Pictures come from `thumbnails` and repaint when decoded.
class ClipRowDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    static constexpr int rowHeight = 48;
    static constexpr int thumbnailSide = 34;

    ClipRowDelegate(const ClipPopupModel &popup, const ClipListModel &rows, ThumbnailCache &thumbnails,
        QString imagesDirectory, QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    // The picture file an image row shows.
    QString imagePath(const QString &imageFile) const;

private:
    void paintThumbnail(QPainter &painter, const QRect &square, int row, const QColor &ink) const;
    // A symbol in one colour, `side` logical pixels, cached per symbol, colour and scale.
    QPixmap symbol(const QString &name, int side, const QColor &color, qreal scale) const;

    const ClipPopupModel &m_popup;
    const ClipListModel &m_rows;
    ThumbnailCache &m_thumbnails;
    QString m_imagesDirectory;
    RelativeDateFormatter m_dates;
    mutable QHash<QString, QPixmap> m_symbols;
};

} // namespace tessary

#include "ui/clipboard/clip_row_delegate.h"

#include "core/clipboard/clip_popup_model.h"
#include "ui/clipboard/clip_list_model.h"
#include "ui/clipboard/popup_style.h"
#include "ui/clipboard/thumbnail_cache.h"
#include "ui/symbol_icons.h"

#include <QPainter>
#include <QPainterPath>
#include <QTextLayout>

namespace tessary {

namespace {

constexpr int margin = 8;
constexpr int gap = 10;
constexpr int pinSide = 14;

QString symbolFor(ClipItem::Kind kind)
{
    switch (kind) {
    case ClipItem::Kind::text:
        return QStringLiteral("text.alignleft");
    case ClipItem::Kind::files:
        return QStringLiteral("doc");
    case ClipItem::Kind::image:
        break;
    }
    return QStringLiteral("photo");
}

// `text` broken into at most two lines of `width`, the second elided when more follows.
QStringList twoLines(const QString &text, const QFont &font, int width)
{
    QTextLayout layout(text, font);
    QTextOption wrapping;
    wrapping.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(wrapping);
    layout.beginLayout();
    QTextLine first = layout.createLine();
    first.setLineWidth(width);
    const QString firstText = text.mid(first.textStart(), first.textLength());
    layout.endLayout();
    const QString rest = text.mid(first.textStart() + first.textLength());
    if (rest.isEmpty())
        return {firstText.trimmed()};
    return {firstText.trimmed(), QFontMetrics(font).elidedText(rest.trimmed(), Qt::ElideRight, width)};
}

} // namespace

ClipRowDelegate::ClipRowDelegate(const ClipPopupModel &popup, const ClipListModel &rows, ThumbnailCache &thumbnails,
    QString imagesDirectory, QObject *parent)
    : QStyledItemDelegate(parent)
    , m_popup(popup)
    , m_rows(rows)
    , m_thumbnails(thumbnails)
    , m_imagesDirectory(std::move(imagesDirectory))
{
}

QString ClipRowDelegate::imagePath(const QString &imageFile) const
{
    return m_imagesDirectory + QLatin1Char('/') + imageFile;
}

QSize ClipRowDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const
{
    return {option.rect.width(), rowHeight};
}

void ClipRowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const ClipItem &item = m_rows.item(index.row());
    const QRect rect = option.rect;
    const QPalette &palette = option.palette;
    const QColor ink = palette.color(QPalette::WindowText);
    const QColor secondary = PopupStyle::secondary(palette);

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (index.row() == m_popup.selection()) {
        QColor accent = palette.color(QPalette::Highlight);
        accent.setAlphaF(0.22f);
        painter->setPen(Qt::NoPen);
        painter->setBrush(accent);
        painter->drawRoundedRect(rect, 9, 9);
    }

    const QRect square(rect.left() + margin, rect.center().y() - thumbnailSide / 2 + 1, thumbnailSide, thumbnailSide);
    paintThumbnail(*painter, square, index.row(), secondary);

    int right = rect.right() - margin;
    if (item.pinned) {
        const QRect pin(right - pinSide + 1, rect.center().y() - pinSide / 2 + 1, pinSide, pinSide);
        painter->drawPixmap(pin,
            symbol(QStringLiteral("pin.fill"), pinSide, PopupStyle::pinColor, painter->device()->devicePixelRatioF()));
        right = pin.left() - gap;
    }

    const int left = square.right() + 1 + gap;
    const int width = right - left + 1;
    const QFont titleFont = PopupStyle::font(13);
    const QFont detailFont = PopupStyle::font(10);
    const QString title = item.title().isEmpty() ? QStringLiteral("(blank)") : item.title();
    const QStringList lines = twoLines(title, titleFont, width);
    const QFontMetrics titleMetrics(titleFont);
    const QFontMetrics detailMetrics(detailFont);
    const int height = int(lines.size()) * titleMetrics.height() + 1 + detailMetrics.height();
    int y = rect.top() + (rect.height() - height) / 2;

    painter->setFont(titleFont);
    painter->setPen(ink);
    for (const QString &line : lines) {
        painter->drawText(QRect(left, y, width, titleMetrics.height()), Qt::AlignLeft | Qt::AlignVCenter, line);
        y += titleMetrics.height();
    }
    y += 1;
    painter->setFont(detailFont);
    painter->setPen(secondary);
    const QString detail = ClipPopupModel::detailLine(item, QDateTime::currentDateTimeUtc(), m_dates);
    painter->drawText(QRect(left, y, width, detailMetrics.height()), Qt::AlignLeft | Qt::AlignVCenter,
        detailMetrics.elidedText(detail, Qt::ElideRight, width));
    painter->restore();
}

void ClipRowDelegate::paintThumbnail(QPainter &painter, const QRect &square, int row, const QColor &ink) const
{
    const ClipItem &item = m_rows.item(row);
    QPainterPath rounded;
    rounded.addRoundedRect(square, 6, 6);
    QColor backing = ink;
    backing.setAlphaF(0.10f);
    painter.fillPath(rounded, backing);

    QString name = symbolFor(item.kind);
    if (item.kind == ClipItem::Kind::image && item.imageFile) {
        QPixmap picture;
        const ThumbnailCache::State state = m_thumbnails.lookup(imagePath(*item.imageFile), picture);
        if (state == ThumbnailCache::State::ready) {
            painter.save();
            painter.setClipPath(rounded);
            painter.drawPixmap(square, picture);
            painter.restore();
            return;
        }
        if (state == ThumbnailCache::State::loading)
            return;
    }
    constexpr int side = 20;
    const QRect inner(square.center().x() - side / 2 + 1, square.center().y() - side / 2 + 1, side, side);
    painter.drawPixmap(inner, symbol(name, side, ink, painter.device()->devicePixelRatioF()));
}

QPixmap ClipRowDelegate::symbol(const QString &name, int side, const QColor &color, qreal scale) const
{
    const QString key
        = name + QLatin1Char('/') + color.name(QColor::HexArgb) + QLatin1Char('/') + QString::number(scale);
    if (const auto found = m_symbols.constFind(key); found != m_symbols.cend())
        return *found;
    QPixmap pixmap = PopupStyle::tinted(SymbolIcons::icon(name), side, color, scale);
    m_symbols.insert(key, pixmap);
    return pixmap;
}

} // namespace tessary

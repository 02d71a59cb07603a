#include "ui/launcher_row_delegate.h"

#include "core/launcher/launcher_result.h"
#include "ui/launcher_list_model.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>

namespace tessary {

namespace {

QFont sized(QFont font, int pixels, QFont::Weight weight = QFont::Normal)
{
    font.setPixelSize(pixels);
    font.setWeight(weight);
    return font;
}

} // namespace

LauncherRowDelegate::LauncherRowDelegate(const LauncherListModel &rows, QObject *parent)
    : QStyledItemDelegate(parent)
    , m_rows(rows)
{
}

QSize LauncherRowDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const
{
    return QSize(option.rect.width(), rowHeight);
}

void LauncherRowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const LauncherResult &row = m_rows.result(index.row());
    const bool selected = m_rows.isSelected(index.row());
    const QRect rect = option.rect;
    const QPalette &palette = option.palette;
    QColor secondary = palette.color(QPalette::Text);
    secondary.setAlphaF(0.55F);

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (selected) {
        QColor accent = palette.color(QPalette::Highlight);
        accent.setAlphaF(0.22F);
        QPainterPath shape;
        shape.addRoundedRect(QRectF(rect), 9, 9);
        painter->fillPath(shape, accent);
    }

    const QRect iconRect(rect.x() + padding, rect.y() + (rect.height() - iconSize) / 2, iconSize, iconSize);
    m_icons.icon(row).paint(painter, iconRect);

    int right = rect.right() - padding;
    if (selected) {
        QString hints = row.hint;
        if (row.secondaryHint)
            hints += QStringLiteral("   ") + *row.secondaryHint;
        const QFont font = sized(option.font, 11);
        const int width = QFontMetrics(font).horizontalAdvance(hints);
        painter->setFont(font);
        painter->setPen(secondary);
        painter->drawText(
            QRect(right - width, rect.y(), width, rect.height()), Qt::AlignVCenter | Qt::AlignRight, hints);
        right -= width + spacing;
    }

    const int left = iconRect.right() + 1 + spacing;
    const bool calc = row.kind == LauncherResult::Kind::calc;
    const QFont titleFont = calc ? sized(option.font, 22, QFont::DemiBold) : sized(option.font, 15);
    const QFont subtitleFont = sized(option.font, 11);
    const QFontMetrics titleMetrics(titleFont);
    const QFontMetrics subtitleMetrics(subtitleFont);
    const bool hasSubtitle = !row.subtitle.isEmpty();
    const int textHeight = titleMetrics.height() + (hasSubtitle ? subtitleMetrics.height() : 0);
    const int top = rect.y() + (rect.height() - textHeight) / 2;
    const int width = std::max(0, right - left);

    painter->setFont(titleFont);
    painter->setPen(palette.color(QPalette::Text));
    painter->drawText(QRect(left, top, width, titleMetrics.height()), Qt::AlignLeft | Qt::AlignVCenter,
        titleMetrics.elidedText(row.title, Qt::ElideRight, width));
    if (hasSubtitle) {
        painter->setFont(subtitleFont);
        painter->setPen(secondary);
        painter->drawText(QRect(left, top + titleMetrics.height(), width, subtitleMetrics.height()),
            Qt::AlignLeft | Qt::AlignVCenter, subtitleMetrics.elidedText(row.subtitle, Qt::ElideMiddle, width));
    }
    painter->restore();
}

} // namespace tessary

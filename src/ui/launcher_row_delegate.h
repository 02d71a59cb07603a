#pragma once

#include "ui/row_icons.h"

#include <QStyledItemDelegate>

namespace tessary {

class LauncherListModel;

// Paints one launcher row, 50 points high: a 30-point icon, the title (large
// and semibold for a calculation) over the subtitle and, on the selected row,
// the action hints at the right on a rounded accent background.
class LauncherRowDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    static constexpr int rowHeight = 50;
    static constexpr int iconSize = 30;
    static constexpr int padding = 10;
    static constexpr int spacing = 12;

    explicit LauncherRowDelegate(const LauncherListModel &rows, QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    const LauncherListModel &m_rows;
    mutable RowIcons m_icons;
};

} // namespace tessary

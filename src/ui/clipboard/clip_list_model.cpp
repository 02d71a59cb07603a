#include "ui/clipboard/clip_list_model.h"

#include "core/clipboard/clip_popup_model.h"
#include "core/clipboard/clipboard_store.h"

namespace tessary {

ClipListModel::ClipListModel(ClipPopupModel &popup, QObject *parent)
    : QAbstractListModel(parent)
    , m_popup(popup)
    , m_rows(popup.results())
{
    connect(&popup, &ClipPopupModel::queryChanged, this, &ClipListModel::refresh);
    connect(&popup.store(), &ClipboardStore::itemsChanged, this, &ClipListModel::refresh);
}

int ClipListModel::rowCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : int(m_rows.size()); }

QVariant ClipListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows.size() || role != Qt::DisplayRole)
        return {};
    return m_rows.at(index.row()).title();
}

QList<int> ClipListModel::rowsShowing(const QString &imageFile) const
{
    QList<int> rows;
    for (int row = 0; row < m_rows.size(); ++row) {
        if (m_rows.at(row).imageFile == imageFile)
            rows.append(row);
    }
    return rows;
}

void ClipListModel::refresh()
{
    beginResetModel();
    m_rows = m_popup.results();
    endResetModel();
}

} // namespace tessary

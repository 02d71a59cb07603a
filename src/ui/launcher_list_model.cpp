#include "ui/launcher_list_model.h"

#include "core/launcher/launcher_model.h"

namespace tessary {

LauncherListModel::LauncherListModel(LauncherModel &model, QObject *parent)
    : QAbstractListModel(parent)
    , m_model(model)
{
    // The rows are replaced as a whole on every keystroke.
    connect(&m_model, &LauncherModel::resultsChanged, this, [this] {
        beginResetModel();
        endResetModel();
    });
    connect(&m_model, &LauncherModel::selectionChanged, this, [this] {
        if (rowCount() > 0)
            Q_EMIT dataChanged(index(0), index(rowCount() - 1));
    });
}

int LauncherListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_model.results().size());
}

QVariant LauncherListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const LauncherResult &row = result(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return row.title;
    case Qt::ToolTipRole:
        return row.subtitle;
    default:
        return {};
    }
}

const LauncherResult &LauncherListModel::result(int row) const { return m_model.results().at(row); }

bool LauncherListModel::isSelected(int row) const { return row == m_model.selection(); }

} // namespace tessary

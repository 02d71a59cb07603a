#pragma once

#include <QAbstractListModel>

namespace tessary {

class LauncherModel;
struct LauncherResult;

// The launcher model's rows for a list view: the view asks only for the rows
// it shows, so a long list costs no more than a short one.
class LauncherListModel : public QAbstractListModel {
    Q_OBJECT

public:
    explicit LauncherListModel(LauncherModel &model, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;

    const LauncherResult &result(int row) const;
    bool isSelected(int row) const;

private:
    LauncherModel &m_model;
};

} // namespace tessary

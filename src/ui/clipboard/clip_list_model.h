#pragma once

#include "core/clipboard/clip_item.h"

#include <QAbstractListModel>

namespace tessary {

class ClipPopupModel;

// The popup's rows: the popup model's results, taken again whenever the query
// or the history changes. Views ask only for the rows they show.
class ClipListModel : public QAbstractListModel {
    Q_OBJECT

public:
    explicit ClipListModel(ClipPopupModel &popup, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    // The title, for accessibility and tests; the delegate draws from `item`.
    QVariant data(const QModelIndex &index, int role) const override;

    const ClipItem &item(int row) const { return m_rows.at(row); }
    // The rows whose picture is the file `imageFile`.
    QList<int> rowsShowing(const QString &imageFile) const;

private:
    void refresh();

    ClipPopupModel &m_popup;
    QList<ClipItem> m_rows;
};

} // namespace tessary

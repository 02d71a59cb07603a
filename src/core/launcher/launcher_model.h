#pragma once

#include "core/launcher/launcher_result.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>
#include <functional>

namespace tessary {

class LauncherSource;

// The launcher panel's state for one opening: the query, the rows and the
// selected row. Every change of the query recomputes the quick rows at once
// and, once typing has paused, merges in the file rows. Main thread only; the
// source must outlive the model.
class LauncherModel : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds fileSearchDelay{180};
    static constexpr double searchRowHeight = 66;
    static constexpr double listPadding = 12;
    static constexpr double rowHeight = 50;

    // Starts with the rows for the empty query. `delay` is how long typing
    // must pause before a file search starts.
    explicit LauncherModel(
        LauncherSource &source, std::chrono::milliseconds delay = fileSearchDelay, QObject *parent = nullptr);

    const QString &query() const { return m_query; }
    void setQuery(const QString &query);
    const QList<LauncherResult> &results() const { return m_results; }
    int selection() const { return m_selection; }
    // Selects row `index` when there is such a row.
    void select(int index);
    // Moves the selection by `step` rows, wrapping around at either end.
    void move(int step);
    // Closes, then runs the selected row's secondary action when `secondary`
    // is asked for and the row has one, else its primary action.
    void activate(bool secondary);

    // The panel height the rows need, in points.
    double height() const { return heightFor(m_results.size()); }
    static double heightFor(qsizetype rows);

    // Hides the panel; set by the owner.
    std::function<void()> close = [] {};

Q_SIGNALS:
    void queryChanged(const QString &query);
    void resultsChanged();
    void selectionChanged(int selection);

private:
    void update();
    void merge(const QList<LauncherResult> &fileRows, const QString &forQuery);
    void setSelection(int selection);

    LauncherSource &m_source;
    QString m_query;
    QList<LauncherResult> m_results;
    int m_selection = 0;
    QTimer m_debounce;
};

} // namespace tessary

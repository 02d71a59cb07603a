#include "core/launcher/launcher_model.h"

#include "core/launcher/launcher_engine.h"
#include "core/launcher/launcher_source.h"

#include <QPointer>

namespace tessary {

LauncherModel::LauncherModel(LauncherSource &source, std::chrono::milliseconds delay, QObject *parent)
    : QObject(parent)
    , m_source(source)
    , m_results(source.quickResults(QString()))
{
    m_debounce.setSingleShot(true);
    m_debounce.setInterval(delay);
    connect(&m_debounce, &QTimer::timeout, this, [this] {
        const QString forQuery = m_query;
        m_source.fileResults(forQuery, [self = QPointer<LauncherModel>(this), forQuery](const auto &rows) {
            if (self)
                self->merge(rows, forQuery);
        });
    });
}

void LauncherModel::setQuery(const QString &query)
{
    if (query == m_query)
        return;
    m_query = query;
    Q_EMIT queryChanged(m_query);
    update();
}

void LauncherModel::update()
{
    m_results = m_source.quickResults(m_query);
    Q_EMIT resultsChanged();
    setSelection(0);
    // Restarting the timer drops the search an earlier keystroke had pending.
    m_debounce.start();
}

void LauncherModel::merge(const QList<LauncherResult> &fileRows, const QString &forQuery)
{
    if (forQuery != m_query)
        return;
    m_results = LauncherEngine::mergeFileRows(m_results, fileRows);
    Q_EMIT resultsChanged();
}

void LauncherModel::select(int index)
{
    if (index >= 0 && index < m_results.size())
        setSelection(index);
}

void LauncherModel::move(int step)
{
    const auto count = int(m_results.size());
    if (count == 0)
        return;
    setSelection(((m_selection + step) % count + count) % count);
}

void LauncherModel::activate(bool secondary)
{
    if (m_selection < 0 || m_selection >= m_results.size())
        return;
    // A copy: closing may drop this model and its rows.
    const LauncherResult row = m_results.at(m_selection);
    close();
    if (secondary && row.secondary)
        row.secondary();
    else if (row.primary)
        row.primary();
}

double LauncherModel::heightFor(qsizetype rows)
{
    return rows == 0 ? searchRowHeight : searchRowHeight + listPadding + rowHeight * double(rows);
}

void LauncherModel::setSelection(int selection)
{
    if (selection == m_selection)
        return;
    m_selection = selection;
    Q_EMIT selectionChanged(m_selection);
}

} // namespace tessary

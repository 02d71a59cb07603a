#include "core/clipboard/clip_popup_model.h"

#include "core/clipboard/clipboard_store.h"
#include "core/clipboard/relative_date_formatter.h"

#include <algorithm>

namespace tessary {

ClipPopupModel::ClipPopupModel(ClipboardStore &store, QObject *parent)
    : QObject(parent)
    , m_store(store)
{
}

void ClipPopupModel::setQuery(const QString &query)
{
    if (query == m_query)
        return;
    m_query = query;
    Q_EMIT queryChanged();
    setSelection(0);
}

void ClipPopupModel::setSelection(int selection)
{
    if (selection == m_selection)
        return;
    m_selection = selection;
    Q_EMIT selectionChanged();
}

QList<ClipItem> ClipPopupModel::results() const { return m_store.search(m_query); }

void ClipPopupModel::move(int step)
{
    const qsizetype count = results().size();
    if (count == 0)
        return;
    setSelection(int(std::clamp<qsizetype>(qsizetype(m_selection) + step, 0, count - 1)));
}

std::optional<ClipItem> ClipPopupModel::current() const
{
    const QList<ClipItem> items = results();
    if (m_selection < 0 || m_selection >= items.size())
        return std::nullopt;
    return items.at(m_selection);
}

void ClipPopupModel::deleteCurrent()
{
    const std::optional<ClipItem> item = current();
    if (!item)
        return;
    m_store.remove(*item);
    const qsizetype remaining = results().size();
    setSelection(int(std::max<qsizetype>(0, std::min<qsizetype>(m_selection, remaining - 1))));
}

void ClipPopupModel::togglePinCurrent()
{
    if (const std::optional<ClipItem> item = current())
        m_store.togglePin(*item);
}

bool ClipPopupModel::choose(bool copyOnly)
{
    const std::optional<ClipItem> item = current();
    if (!item)
        return false;
    // Copied first: closing usually drops this model.
    const auto paste = pasteItem;
    close();
    paste(*item, copyOnly);
    return true;
}

QString ClipPopupModel::sourceName(const std::optional<QString> &sourceApp)
{
    if (!sourceApp || sourceApp->isEmpty())
        return QStringLiteral("\u2014");
    return sourceApp->section(QLatin1Char('.'), -1);
}

QString ClipPopupModel::detailLine(const ClipItem &item, const QDateTime &now, const RelativeDateFormatter &dates)
{
    return sourceName(item.sourceApp) + QStringLiteral(" \u00B7 ") + dates.format(item.date, now);
}

} // namespace tessary

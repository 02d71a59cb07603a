#pragma once

#include "core/clipboard/clip_item.h"

#include <QObject>
#include <QString>

#include <functional>
#include <optional>

namespace tessary {

class ClipboardStore;
class RelativeDateFormatter;

// One opening of the clipboard popup: the search text and the selected row
// over the store's current search results, which are asked for again by every
// operation, so a copy arriving while the popup is open is seen at once.
// Main thread only; the store must outlive the model.
class ClipPopupModel : public QObject {
    Q_OBJECT

public:
    explicit ClipPopupModel(ClipboardStore &store, QObject *parent = nullptr);

    ClipboardStore &store() const { return m_store; }

    const QString &query() const { return m_query; }
    // A different text returns the selection to the first row.
    void setQuery(const QString &query);

    int selection() const { return m_selection; }
    void setSelection(int selection);

    // The store's search of the query, pinned entries first.
    QList<ClipItem> results() const;
    // Moves the selection by `step` rows, kept within the results; nothing without results.
    void move(int step);
    // The selected entry; none when the selection is outside the results.
    std::optional<ClipItem> current() const;
    // Removes the selected entry; the selection stays put unless that was the
    // last row, then it follows to the new last row.
    void deleteCurrent();
    void togglePinCurrent();
    // Return and a click: closes the popup, then hands over the selected entry
    // (to be copied only, or pasted). False when nothing is selected.
    bool choose(bool copyOnly);

    // Set by the owner of the popup; both do nothing until then.
    std::function<void()> close = [] {};
    std::function<void(const ClipItem &item, bool copyOnly)> pasteItem = [](const ClipItem &, bool) {};

    // The last dot-separated part of an application id ("org.gnome.Terminal"
    // gives "Terminal"); "—" without one.
    static QString sourceName(const std::optional<QString> &sourceApp);
    // A row's second line: source name, " · ", the copy's date relative to `now`.
    static QString detailLine(const ClipItem &item, const QDateTime &now, const RelativeDateFormatter &dates);

Q_SIGNALS:
    void queryChanged();
    void selectionChanged();

private:
    ClipboardStore &m_store;
    QString m_query;
    int m_selection = 0;
};

} // namespace tessary

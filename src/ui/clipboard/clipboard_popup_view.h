#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QListView;
class QStackedWidget;

namespace tessary {

class ClipboardStore;
class ClipListModel;
class ClipPopupModel;
class ThumbnailCache;

// The clipboard popup: a search field that keeps the keyboard, the matching
// history entries (built lazily by a list view, so a long history costs only
// the visible rows) or an empty-state message, and the key legend. Keys act on
// `model`; the store is watched so copies made while it is open appear.
class ClipboardPopupView : public QWidget {
    Q_OBJECT

public:
    static constexpr int width = 580;
    static constexpr int height = 440;

    static constexpr const char16_t *placeholder = u"Search clipboard history";
    static constexpr const char16_t *noMatches = u"No matches.";
    static constexpr const char16_t *emptyHistory = u"Copy something and it will show up here.";
#ifdef Q_OS_MACOS
    static constexpr const char16_t *legend
        = u"\u21A9 paste   \u21E7\u21A9 copy only   \u2318P pin   \u2318\u232B delete   esc close";
#else
    static constexpr const char16_t *legend
        = u"\u21A9 paste   \u21E7\u21A9 copy only   Ctrl+P pin   Ctrl+\u232B delete   esc close";
#endif

    ClipboardPopupView(ClipPopupModel &model, ClipboardStore &store, QWidget *parent = nullptr);
    ~ClipboardPopupView() override;

    QLineEdit *searchField() const { return m_field; }
    QListView *list() const { return m_list; }
    // The empty-state line, or empty while rows are shown.
    QString emptyText() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool handleKey(QKeyEvent *event);
    void showResultsOrEmptyState();
    void followSelection();
    void repaintRowsShowing(const QString &path);

    ClipPopupModel &m_model;
    ClipboardStore &m_store;
    ThumbnailCache *m_thumbnails;
    ClipListModel *m_rows;
    QLineEdit *m_field;
    QStackedWidget *m_stack;
    QListView *m_list;
    QLabel *m_emptyLabel;
};

} // namespace tessary

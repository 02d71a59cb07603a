#pragma once

#include <QWidget>

class QFrame;
class QLineEdit;
class QListView;

namespace tessary {

class LauncherListModel;
class LauncherModel;

// The launcher panel's content: the search field over the result rows, on a
// rounded translucent background. Keys typed into the field drive the model:
// Up and Down move the selection (wrapping), Return runs the selected row,
// Ctrl+Return its secondary action, Escape closes; a click runs a row.
class LauncherView : public QWidget {
    Q_OBJECT

public:
    static constexpr const char *placeholder
        = "Search apps and files, calculate, or type g, yt, gh\u2026 to search the web";

    explicit LauncherView(LauncherModel &model, QWidget *parent = nullptr);

    QLineEdit *field() const { return m_field; }
    QListView *list() const { return m_list; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void showRows();

    LauncherModel &m_model;
    LauncherListModel *m_rows;
    QLineEdit *m_field;
    QFrame *m_divider;
    QWidget *m_listBox;
    QListView *m_list;
};

} // namespace tessary

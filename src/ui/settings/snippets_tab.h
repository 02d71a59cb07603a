#pragma once

#include <QStringList>
#include <QUuid>
#include <QWidget>

#include <optional>

class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QStackedWidget;

namespace tessary {

struct SettingsServices;
struct Snippet;

// The snippets as a list beside an editor; every edit is written to the store.
class SnippetsTab : public QWidget {
    Q_OBJECT

public:
    explicit SnippetsTab(const SettingsServices &services, QWidget *parent = nullptr);

    std::optional<QUuid> selection() const { return m_selection; }
    void select(const std::optional<QUuid> &id);

    QListWidget *list() const { return m_list; }
    QLineEdit *nameEdit() const { return m_name; }
    QLineEdit *keywordEdit() const { return m_keyword; }
    QPlainTextEdit *textEdit() const { return m_text; }
    QPushButton *addButton() const { return m_add; }
    QPushButton *removeButton() const { return m_remove; }

private:
    void showList();
    void showEditor();
    void edit(const std::function<void(Snippet &)> &change);

    const SettingsServices &m_services;
    std::optional<QUuid> m_selection;
    QListWidget *m_list = nullptr;
    QPushButton *m_add = nullptr;
    QPushButton *m_remove = nullptr;
    QStackedWidget *m_editor = nullptr;
    QLineEdit *m_name = nullptr;
    QLineEdit *m_keyword = nullptr;
    QPlainTextEdit *m_text = nullptr;
    // What each list row shows (id, name, keyword), to rebuild the rows only when that changes.
    QStringList m_shownRows;
    // Set while the editor shows a snippet, so that showing it is not an edit.
    bool m_filling = false;
};

} // namespace tessary

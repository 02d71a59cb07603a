#pragma once

#include <QList>

#include <QUuid>
#include <QWidget>
#include <array>

class QCheckBox;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

namespace tessary {

struct SettingsServices;

// The launcher's shortcut and sources, and its editable web-search keywords.
class LauncherTab : public QWidget {
    Q_OBJECT

public:
    // The template a new web search starts with.
    static constexpr const char *exampleUrl = "https://example.com/search?q={query}";

    explicit LauncherTab(const SettingsServices &services, QWidget *parent = nullptr);

private:
    void showSettings();
    void showSearches();
    void editSearch(const QUuid &id, int field, const QString &text);

    const SettingsServices &m_services;
    QCheckBox *m_files = nullptr;
    QCheckBox *m_system = nullptr;
    QPushButton *m_add = nullptr;
    QVBoxLayout *m_searchRows = nullptr;
    // The entries the rows were built for, and their keyword, name and URL
    // fields; edits in place keep the rows (and the focus).
    QList<QUuid> m_shownIds;
    QList<std::array<QLineEdit *, 3>> m_fields;
};

} // namespace tessary

#pragma once

#include <QMessageBox>
#include <QPointer>
#include <QWidget>

class QCheckBox;
class QComboBox;
class QLabel;
class QMenu;
class QPushButton;
class QVBoxLayout;

namespace tessary {

struct SettingsServices;

// Clipboard history options, its contents and the applications whose copies
// are never recorded.
class ClipboardTab : public QWidget {
    Q_OBJECT

public:
    explicit ClipboardTab(const SettingsServices &services, QWidget *parent = nullptr);

    // The name shown for an excluded application id: the installed
    // application's, else the id's last non-empty dot-separated part.
    static QString appName(const QString &id, const SettingsServices &services);

    QComboBox *forgetAfter() const { return m_retention; }
    QMenu *addAppMenu() const { return m_addMenu; }
    // The confirmation of "Clear everything" while it is open.
    QMessageBox *confirmation() const { return m_confirm; }

private:
    void showSettings();
    void showCounts();
    void showExcluded();
    void fillAddMenu();
    void confirmClearAll();

    const SettingsServices &m_services;
    QCheckBox *m_enabled = nullptr;
    QComboBox *m_max = nullptr;
    QComboBox *m_retention = nullptr;
    QLabel *m_counts = nullptr;
    QVBoxLayout *m_excludedRows = nullptr;
    QMenu *m_addMenu = nullptr;
    QPushButton *m_clearAll = nullptr;
    QPushButton *m_addApp = nullptr;
    QPointer<QMessageBox> m_confirm;
    QStringList m_shownExcluded;
};

} // namespace tessary

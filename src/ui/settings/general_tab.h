#pragma once

#include "core/app/hot_action.h"

#include <QSet>
#include <QTimer>
#include <QWidget>

class QCheckBox;
class QGroupBox;
class QLabel;
class QPushButton;
class QVBoxLayout;

namespace tessary {

struct SettingsServices;

// Permission status, opening at login, the shortcuts that could not be
// registered, and tips.
class GeneralTab : public QWidget {
    Q_OBJECT

public:
    static constexpr int trustRefreshMs = 1500;

    explicit GeneralTab(const SettingsServices &services, QWidget *parent = nullptr);

    void setFailed(const QSet<HotAction> &failed);
    // Reads the permission again (also done on every tick while shown).
    void refreshTrust();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void buildPermissions(QVBoxLayout *page);
    void buildStartup(QVBoxLayout *page);
    void toggleLogin(bool enabled);
    void showLoginStatus();

    const SettingsServices &m_services;
    QTimer m_timer;
    QLabel *m_trustIcon = nullptr;
    QLabel *m_trustTitle = nullptr;
    QLabel *m_trustHint = nullptr;
    QPushButton *m_grant = nullptr;
    QCheckBox *m_login = nullptr;
    QLabel *m_loginApproval = nullptr;
    QLabel *m_loginError = nullptr;
    QGroupBox *m_failedSection = nullptr;
    QVBoxLayout *m_failedRows = nullptr;
};

} // namespace tessary

#include "ui/settings/general_tab.h"

#include "core/platform/accessibility.h"
#include "core/platform/login_item.h"
#include "core/settings/app_settings.h"
#include "ui/settings/settings_form.h"
#include "ui/settings/settings_services.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include <algorithm>

namespace tessary {

namespace {

#ifdef Q_OS_MACOS
const char *const trustedText = "Accessibility is allowed";
const char *const untrustedText = "Accessibility permission needed";
const char16_t *const untrustedHint = u"Needed to move windows and to paste for you. Add Tessary in System Settings "
                                      u"\u203A Privacy & Security \u203A Accessibility.";
const char16_t *const approvalText = u"Approve Tessary under System Settings \u203A General \u203A Login Items.";
const char *const takenBy = ") is already used by macOS or another app.";
#else
const char *const trustedText = "Window management is available";
const char *const untrustedText = "A window manager is needed";
const char16_t *const untrustedHint = u"Needed to move windows and to paste for you. No window manager that "
                                      u"follows the EWMH standard (Openbox, Xfwm, KWin, Mutter\u2026) is running.";
const char16_t *const approvalText = u"Approve Tessary in your desktop\u2019s startup applications.";
const char *const takenBy = ") is already used by the desktop or another app.";
#endif

QLabel *iconLabel(const QString &symbol, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setPixmap(SettingsForm::statusIcon(symbol, label).pixmap(18, 18));
    label->setFixedSize(22, 22);
    label->setAlignment(Qt::AlignCenter);
    return label;
}

} // namespace

GeneralTab::GeneralTab(const SettingsServices &services, QWidget *parent)
    : QWidget(parent)
    , m_services(services)
{
    QVBoxLayout *page = SettingsForm::scrollingPage(this);
    buildPermissions(page);
    buildStartup(page);

    m_failedSection = SettingsForm::section(QStringLiteral("Shortcuts that couldn't be registered"), this);
    m_failedRows = new QVBoxLayout;
    SettingsForm::sectionLayout(m_failedSection)->addLayout(m_failedRows);
    SettingsForm::sectionLayout(m_failedSection)
        ->addWidget(new QLabel(QStringLiteral("Pick a different shortcut in the Windows or Launcher tab."), this));
    m_failedSection->hide();
    page->addWidget(m_failedSection);

    QGroupBox *tips = SettingsForm::section(QStringLiteral("Tips"), this);
    for (const char16_t *tip :
        {u"\u2022 Drag a window to the left or right screen edge for halves, the top edge to maximize, a corner for "
         u"a quarter.",
            u"\u2022 Press the same half shortcut again to cycle half \u2192 two thirds \u2192 one third.",
            u"\u2022 In the launcher type `g cats` to search Google, `cb text` to search your clipboard, or a "
            u"calculation like `12*7%`."}) {
        auto *label = new QLabel(QString::fromUtf16(tip), tips);
        label->setWordWrap(true);
        SettingsForm::sectionLayout(tips)->addWidget(label);
    }
    page->addWidget(tips);
    page->addStretch(1);

    m_timer.setInterval(trustRefreshMs);
    connect(&m_timer, &QTimer::timeout, this, &GeneralTab::refreshTrust);
    refreshTrust();
}

void GeneralTab::buildPermissions(QVBoxLayout *page)
{
    QGroupBox *box = SettingsForm::section(QStringLiteral("Permissions"), this);
    auto *row = new QHBoxLayout;
    m_trustIcon = new QLabel(box);
    m_trustIcon->setFixedSize(22, 22);
    auto *texts = new QVBoxLayout;
    m_trustTitle = new QLabel(box);
    m_trustHint = SettingsForm::note(QString::fromUtf16(untrustedHint), box);
    texts->addWidget(m_trustTitle);
    texts->addWidget(m_trustHint);
    row->addWidget(m_trustIcon, 0, Qt::AlignTop);
    row->addLayout(texts, 1);
    m_grant = new QPushButton(QString::fromUtf16(u"Grant\u2026"), box);
    connect(m_grant, &QPushButton::clicked, this, [this] {
        m_services.accessibility.requestTrust();
        m_services.accessibility.openPrivacySettings();
    });
    row->addWidget(m_grant, 0, Qt::AlignTop);
#ifndef Q_OS_MACOS
    // Nothing to grant: a window manager either runs or it does not.
    m_grant->setVisible(false);
#endif
    SettingsForm::sectionLayout(box)->addLayout(row);
    page->addWidget(box);
}

void GeneralTab::buildStartup(QVBoxLayout *page)
{
    QGroupBox *box = SettingsForm::section(QStringLiteral("Startup"), this);
    m_login = new QCheckBox(QStringLiteral("Open Tessary when I log in"), box);
    m_login->setChecked(m_services.loginItem.status() == LoginItem::Status::enabled);
    connect(m_login, &QCheckBox::clicked, this, &GeneralTab::toggleLogin);
    m_loginApproval = SettingsForm::note(QString::fromUtf16(approvalText), box);
    m_loginError = SettingsForm::note(QString(), box);
    m_loginError->setObjectName(QStringLiteral("loginError"));
    m_loginError->setStyleSheet(SettingsForm::errorStyle());
    m_loginError->hide();
    SettingsForm::sectionLayout(box)->addWidget(m_login);
    SettingsForm::sectionLayout(box)->addWidget(m_loginApproval);
    SettingsForm::sectionLayout(box)->addWidget(m_loginError);
    showLoginStatus();
    page->addWidget(box);
}

void GeneralTab::toggleLogin(bool enabled)
{
    const std::optional<QString> error = m_services.loginItem.set(enabled);
    m_loginError->setText(error.value_or(QString()));
    m_loginError->setVisible(error.has_value());
    showLoginStatus();
}

void GeneralTab::showLoginStatus()
{
    const LoginItem::Status status = m_services.loginItem.status();
    m_login->setChecked(status == LoginItem::Status::enabled);
    m_loginApproval->setVisible(status == LoginItem::Status::requiresApproval);
}

void GeneralTab::refreshTrust()
{
    const bool trusted = m_services.accessibility.isTrusted();
    const QString symbol
        = trusted ? QStringLiteral("checkmark.circle.fill") : QStringLiteral("exclamationmark.triangle.fill");
    m_trustIcon->setPixmap(SettingsForm::statusIcon(symbol, m_trustIcon).pixmap(18, 18));
    m_trustTitle->setText(QLatin1String(trusted ? trustedText : untrustedText));
    m_trustHint->setVisible(!trusted);
#ifdef Q_OS_MACOS
    m_grant->setVisible(!trusted);
#endif
}

void GeneralTab::setFailed(const QSet<HotAction> &failed)
{
    while (QLayoutItem *item = m_failedRows->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    QList<HotAction> sorted(failed.cbegin(), failed.cend());
    std::sort(sorted.begin(), sorted.end(), [](HotAction a, HotAction b) { return rawValue(a) < rawValue(b); });
    for (HotAction action : sorted) {
        auto *row = new QWidget(m_failedSection);
        auto *layout = new QHBoxLayout(row);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(iconLabel(QStringLiteral("exclamationmark.triangle"), row));
        const std::optional<KeyCombo> combo = m_services.settings.combo(action);
        auto *text = new QLabel(
            title(action) + QStringLiteral(" (") + (combo ? combo->display() : QString()) + QLatin1String(takenBy),
            row);
        text->setWordWrap(true);
        text->setStyleSheet(SettingsForm::warningStyle());
        layout->addWidget(text, 1);
        m_failedRows->addWidget(row);
    }
    m_failedSection->setVisible(!failed.isEmpty());
}

void GeneralTab::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    refreshTrust();
    m_timer.start();
}

void GeneralTab::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    m_timer.stop();
}

} // namespace tessary

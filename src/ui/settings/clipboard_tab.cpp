#include "ui/settings/clipboard_tab.h"

#include "core/clipboard/clipboard_store.h"
#include "core/platform/workspace.h"
#include "core/settings/app_settings.h"
#include "ui/settings/action_recorder.h"
#include "ui/settings/settings_form.h"
#include "ui/settings/settings_services.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QToolButton>

#include <algorithm>

namespace tessary {

namespace {

QComboBox *picker(const QList<std::pair<int, QString>> &choices, QWidget *parent)
{
    auto *box = new QComboBox(parent);
    for (const auto &[value, text] : choices)
        box->addItem(text, value);
    return box;
}

void select(QComboBox *box, int value)
{
    const QSignalBlocker block(box);
    box->setCurrentIndex(box->findData(value));
}

QHBoxLayout *labelled(const QString &label, QWidget *control)
{
    auto *row = new QHBoxLayout;
    row->addWidget(new QLabel(label, control->parentWidget()), 1);
    row->addWidget(control);
    return row;
}

} // namespace

ClipboardTab::ClipboardTab(const SettingsServices &services, QWidget *parent)
    : QWidget(parent)
    , m_services(services)
{
    QVBoxLayout *page = SettingsForm::scrollingPage(this);

    QGroupBox *first = SettingsForm::section(QString(), this);
    QVBoxLayout *firstRows = SettingsForm::sectionLayout(first);
    m_enabled = new QCheckBox(QStringLiteral("Remember what I copy"), first);
    connect(m_enabled, &QCheckBox::toggled, this, [this](bool on) {
        SettingsData record = m_services.settings.data();
        record.clipboardEnabled = on;
        m_services.settings.setData(record);
    });
    firstRows->addWidget(m_enabled);
    firstRows->addLayout(
        labelled(QStringLiteral("Open clipboard history"), new ActionRecorder(services, HotAction::clipboard, first)));
    QList<std::pair<int, QString>> sizes;
    for (int size : {50, 100, 200, 500, 1000})
        sizes.append({size, QStringLiteral("%1 items").arg(size)});
    m_max = picker(sizes, first);
    connect(m_max, &QComboBox::currentIndexChanged, this, [this] {
        SettingsData record = m_services.settings.data();
        record.clipboardMax = m_max->currentData().toInt();
        m_services.settings.setData(record);
    });
    firstRows->addLayout(labelled(QStringLiteral("Keep up to"), m_max));
    m_retention = picker({{7, QStringLiteral("1 week")}, {30, QStringLiteral("1 month")},
                             {90, QStringLiteral("3 months")}, {0, QStringLiteral("Never")}},
        first);
    connect(m_retention, &QComboBox::currentIndexChanged, this, [this] {
        SettingsData record = m_services.settings.data();
        record.clipboardRetentionDays = m_retention->currentData().toInt();
        m_services.settings.setData(record);
    });
    firstRows->addLayout(labelled(QStringLiteral("Forget unpinned items after"), m_retention));
    page->addWidget(first);

    QGroupBox *history = SettingsForm::section(QStringLiteral("History"), this);
    auto *historyRow = new QHBoxLayout;
    m_counts = new QLabel(history);
    auto *clearUnpinned = new QPushButton(QStringLiteral("Clear unpinned"), history);
    connect(clearUnpinned, &QPushButton::clicked, this, [this] { m_services.clipboard.clear(true); });
    m_clearAll = new QPushButton(QStringLiteral("Clear everything"), history);
    m_clearAll->setStyleSheet(SettingsForm::errorStyle());
    connect(m_clearAll, &QPushButton::clicked, this, &ClipboardTab::confirmClearAll);
    historyRow->addWidget(m_counts, 1);
    historyRow->addWidget(clearUnpinned);
    historyRow->addWidget(m_clearAll);
    SettingsForm::sectionLayout(history)->addLayout(historyRow);
    page->addWidget(history);

    QGroupBox *excluded = SettingsForm::section(QStringLiteral("Never record copies from"), this);
    m_excludedRows = new QVBoxLayout;
    m_excludedRows->setSpacing(8);
    SettingsForm::sectionLayout(excluded)->addLayout(m_excludedRows);
    m_addApp = new QPushButton(QString::fromUtf16(u"Add an app\u2026"), excluded);
    m_addMenu = new QMenu(m_addApp);
    connect(m_addMenu, &QMenu::aboutToShow, this, &ClipboardTab::fillAddMenu);
    m_addApp->setMenu(m_addMenu);
    auto *addRow = new QHBoxLayout;
    addRow->addWidget(m_addApp);
    addRow->addStretch(1);
    SettingsForm::sectionLayout(excluded)->addLayout(addRow);
    SettingsForm::sectionLayout(excluded)->addWidget(SettingsForm::note(
        QStringLiteral("Items marked as concealed by password managers are always skipped."), excluded));
    SettingsForm::sectionLayout(excluded)->addWidget(SettingsForm::note(
        QString::fromUtf16(u"Formatting isn\u2019t kept: text is stored and pasted as plain text."), excluded));
    page->addWidget(excluded);
    page->addStretch(1);

    connect(&services.settings, &AppSettings::changed, this, &ClipboardTab::showSettings);
    connect(&services.clipboard, &ClipboardStore::itemsChanged, this, &ClipboardTab::showCounts);
    showSettings();
    showCounts();
}

QString ClipboardTab::appName(const QString &id, const SettingsServices &services)
{
    if (services.applicationName) {
        if (const std::optional<QString> name = services.applicationName(id))
            return *name;
    }
    const QStringList parts = id.split(QLatin1Char('.'), Qt::SkipEmptyParts);
    return parts.isEmpty() ? id : parts.last();
}

void ClipboardTab::showSettings()
{
    const SettingsData &record = m_services.settings.data();
    {
        const QSignalBlocker block(m_enabled);
        m_enabled->setChecked(record.clipboardEnabled);
    }
    select(m_max, record.clipboardMax);
    select(m_retention, record.clipboardRetentionDays);
    if (record.clipboardExcluded != m_shownExcluded)
        showExcluded();
}

void ClipboardTab::showCounts()
{
    const QList<ClipItem> &items = m_services.clipboard.items();
    const auto pinned = std::count_if(items.cbegin(), items.cend(), [](const ClipItem &item) { return item.pinned; });
    m_counts->setText(QStringLiteral("%1 items (%2 pinned)").arg(items.size()).arg(pinned));
}

void ClipboardTab::showExcluded()
{
    m_shownExcluded = m_services.settings.data().clipboardExcluded;
    while (QLayoutItem *item = m_excludedRows->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    QWidget *previous = m_clearAll;
    for (const QString &id : std::as_const(m_shownExcluded)) {
        auto *row = new QWidget(this);
        auto *layout = new QHBoxLayout(row);
        layout->setContentsMargins(0, 0, 0, 0);
        auto *texts = new QVBoxLayout;
        texts->setSpacing(0);
        texts->addWidget(new QLabel(appName(id, m_services), row));
        texts->addWidget(SettingsForm::note(id, row));
        layout->addLayout(texts, 1);
        QToolButton *remove = SettingsForm::removeButton(row);
        connect(remove, &QToolButton::clicked, this, [this, id] {
            SettingsData record = m_services.settings.data();
            record.clipboardExcluded.removeAll(id);
            m_services.settings.setData(record);
        });
        layout->addWidget(remove);
        m_excludedRows->addWidget(row);
        // Rows are made after the button below them: Tab goes through them first.
        QWidget::setTabOrder(previous, remove);
        previous = remove;
    }
    QWidget::setTabOrder(previous, m_addApp);
}

void ClipboardTab::fillAddMenu()
{
    m_addMenu->clear();
    const qint64 ownPid = m_services.workspace.ownPid();
    for (const RunningApp &app : m_services.workspace.runningApplications()) {
        if (app.id.isEmpty() || app.pid == ownPid)
            continue;
        QAction *item = m_addMenu->addAction(app.name.isEmpty() ? app.id : app.name);
        connect(item, &QAction::triggered, this, [this, id = app.id] {
            SettingsData record = m_services.settings.data();
            if (record.clipboardExcluded.contains(id))
                return;
            record.clipboardExcluded.append(id);
            m_services.settings.setData(record);
        });
    }
}

void ClipboardTab::confirmClearAll()
{
    if (m_confirm && m_confirm->isVisible())
        return;
    m_confirm = new QMessageBox(QMessageBox::Warning, QStringLiteral("Tessary"),
        QStringLiteral("Delete all clipboard history, including pinned items?"), QMessageBox::NoButton, this);
    m_confirm->setAttribute(Qt::WA_DeleteOnClose);
    QPushButton *destroy = m_confirm->addButton(QStringLiteral("Delete everything"), QMessageBox::DestructiveRole);
    m_confirm->addButton(QMessageBox::Cancel);
    m_confirm->setDefaultButton(QMessageBox::Cancel);
    connect(m_confirm, &QMessageBox::buttonClicked, this, [this, destroy](QAbstractButton *button) {
        if (button == destroy)
            m_services.clipboard.clear(false);
    });
    m_confirm->open();
}

} // namespace tessary

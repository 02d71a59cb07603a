#include "ui/settings/launcher_tab.h"

#include "core/settings/app_settings.h"
#include "ui/settings/action_recorder.h"
#include "ui/settings/settings_form.h"
#include "ui/settings/settings_services.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

namespace tessary {

namespace {

enum Field { keywordField, nameField, urlField };

QList<QUuid> idsOf(const QList<WebSearch> &searches)
{
    QList<QUuid> ids;
    for (const WebSearch &search : searches)
        ids.append(search.id);
    return ids;
}

} // namespace

LauncherTab::LauncherTab(const SettingsServices &services, QWidget *parent)
    : QWidget(parent)
    , m_services(services)
{
    QVBoxLayout *page = SettingsForm::scrollingPage(this);

    QGroupBox *first = SettingsForm::section(QString(), this);
    auto *shortcutRow = new QHBoxLayout;
    shortcutRow->addWidget(new QLabel(QStringLiteral("Open launcher"), first), 1);
    shortcutRow->addWidget(new ActionRecorder(services, HotAction::launcher, first));
    SettingsForm::sectionLayout(first)->addLayout(shortcutRow);
#ifdef Q_OS_MACOS
    m_files = new QCheckBox(QStringLiteral("Search files (uses Spotlight)"), first);
#else
    m_files = new QCheckBox(QStringLiteral("Search files (in your home folder)"), first);
#endif
    connect(m_files, &QCheckBox::toggled, this, [this](bool on) {
        SettingsData record = m_services.settings.data();
        record.launcherFiles = on;
        m_services.settings.setData(record);
    });
    m_system = new QCheckBox(
        QString::fromUtf16(u"Include system commands (sleep, lock, dark mode, empty trash\u2026)"), first);
    connect(m_system, &QCheckBox::toggled, this, [this](bool on) {
        SettingsData record = m_services.settings.data();
        record.launcherSystem = on;
        m_services.settings.setData(record);
    });
    SettingsForm::sectionLayout(first)->addWidget(m_files);
    SettingsForm::sectionLayout(first)->addWidget(m_system);
    page->addWidget(first);

    QGroupBox *searches = SettingsForm::section(
        QString::fromUtf16(u"Web searches \u2014 type the keyword, a space, then your search"), this);
    m_searchRows = new QVBoxLayout;
    m_searchRows->setSpacing(4);
    SettingsForm::sectionLayout(searches)->addLayout(m_searchRows);
    SettingsForm::sectionLayout(searches)->addWidget(SettingsForm::note(
        QStringLiteral("The first one is also offered at the bottom for anything you type."), searches));
    auto *buttons = new QHBoxLayout;
    m_add = new QPushButton(QStringLiteral("Add search"), searches);
    connect(m_add, &QPushButton::clicked, this, [this] {
        SettingsData record = m_services.settings.data();
        record.webSearches.append(
            WebSearch{QUuid::createUuid(), QString(), QString(), QString::fromLatin1(exampleUrl)});
        m_services.settings.setData(record);
    });
    auto *reset = new QPushButton(QStringLiteral("Reset to defaults"), searches);
    connect(reset, &QPushButton::clicked, this, [this] {
        SettingsData record = m_services.settings.data();
        record.webSearches = WebSearch::defaults();
        m_services.settings.setData(record);
    });
    buttons->addWidget(m_add);
    buttons->addWidget(reset);
    buttons->addStretch(1);
    SettingsForm::sectionLayout(searches)->addLayout(buttons);
    page->addWidget(searches);
    page->addStretch(1);

    connect(&services.settings, &AppSettings::changed, this, &LauncherTab::showSettings);
    showSettings();
}

void LauncherTab::showSettings()
{
    const SettingsData &record = m_services.settings.data();
    const QSignalBlocker blockFiles(m_files);
    const QSignalBlocker blockSystem(m_system);
    m_files->setChecked(record.launcherFiles);
    m_system->setChecked(record.launcherSystem);
    if (idsOf(record.webSearches) != m_shownIds) {
        showSearches();
        return;
    }
    for (qsizetype i = 0; i < m_fields.size(); ++i) {
        const WebSearch &search = record.webSearches.at(i);
        const std::array<QString, 3> texts = {search.keyword, search.name, search.url};
        for (std::size_t f = 0; f < texts.size(); ++f) {
            if (m_fields[i][f]->text() != texts[f])
                m_fields[i][f]->setText(texts[f]);
        }
    }
}

void LauncherTab::showSearches()
{
    const QList<WebSearch> &searches = m_services.settings.data().webSearches;
    m_shownIds = idsOf(searches);
    m_fields.clear();
    while (QLayoutItem *item = m_searchRows->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    QList<QWidget *> tabOrder;
    for (const WebSearch &search : searches) {
        auto *row = new QWidget(this);
        auto *layout = new QHBoxLayout(row);
        layout->setContentsMargins(0, 0, 0, 0);
        std::array<QLineEdit *, 3> fields{};
        const auto field = [&](Field which, const QString &text, const QString &placeholder, int width) {
            auto *edit = new QLineEdit(text, row);
            edit->setPlaceholderText(placeholder);
            if (width > 0)
                edit->setFixedWidth(width);
            connect(edit, &QLineEdit::textEdited, this,
                [this, id = search.id, which](const QString &value) { editSearch(id, which, value); });
            layout->addWidget(edit, width > 0 ? 0 : 1);
            fields[which] = edit;
        };
        field(keywordField, search.keyword, QStringLiteral("kw"), 50);
        field(nameField, search.name, QStringLiteral("Name"), 120);
        field(urlField, search.url, QStringLiteral("URL with {query}"), 0);
        m_fields.append(fields);
        QToolButton *remove = SettingsForm::removeButton(row);
        tabOrder << fields[keywordField] << fields[nameField] << fields[urlField] << remove;
        connect(remove, &QToolButton::clicked, this, [this, id = search.id] {
            SettingsData record = m_services.settings.data();
            record.webSearches.removeIf([&id](const WebSearch &entry) { return entry.id == id; });
            m_services.settings.setData(record);
        });
        layout->addWidget(remove);
        m_searchRows->addWidget(row);
    }
    // Rows are made after the buttons below them: Tab goes through them first.
    QWidget *previous = m_system;
    for (QWidget *next : std::as_const(tabOrder)) {
        QWidget::setTabOrder(previous, next);
        previous = next;
    }
    QWidget::setTabOrder(previous, m_add);
}

void LauncherTab::editSearch(const QUuid &id, int field, const QString &text)
{
    SettingsData record = m_services.settings.data();
    for (WebSearch &search : record.webSearches) {
        if (search.id != id)
            continue;
        (field == keywordField ? search.keyword : field == nameField ? search.name : search.url) = text;
    }
    m_services.settings.setData(record);
}

} // namespace tessary

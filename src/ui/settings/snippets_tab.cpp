#include "ui/settings/snippets_tab.h"

#include "core/settings/snippet_store.h"
#include "ui/settings/settings_form.h"
#include "ui/settings/settings_services.h"

#include <QFontDatabase>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStackedWidget>

namespace tessary {

namespace {

constexpr int idRole = Qt::UserRole;

const Snippet *findSnippet(const QList<Snippet> &snippets, const std::optional<QUuid> &id)
{
    for (const Snippet &snippet : snippets) {
        if (id && snippet.id == *id)
            return &snippet;
    }
    return nullptr;
}

} // namespace

SnippetsTab::SnippetsTab(const SettingsServices &services, QWidget *parent)
    : QWidget(parent)
    , m_services(services)
{
    auto *page = new QHBoxLayout(this);
    page->setContentsMargins(16, 12, 16, 12);

    auto *left = new QVBoxLayout;
    m_list = new QListWidget(this);
    m_list->setFixedWidth(210);
    connect(m_list, &QListWidget::currentItemChanged, this, [this](QListWidgetItem *item) {
        if (!m_filling)
            select(item ? std::optional<QUuid>(item->data(idRole).toUuid()) : std::nullopt);
    });
    left->addWidget(m_list, 1);
    auto *buttons = new QHBoxLayout;
    m_add = new QPushButton(QStringLiteral("+"), this);
    m_add->setToolTip(QStringLiteral("Add a snippet"));
    m_remove = new QPushButton(QString::fromUtf16(u"\u2212"), this);
    m_remove->setToolTip(QStringLiteral("Remove the selected snippet"));
    for (QPushButton *button : {m_add, m_remove}) {
        button->setFixedWidth(32);
        buttons->addWidget(button);
    }
    buttons->addStretch(1);
    left->addLayout(buttons);
    page->addLayout(left);

    connect(m_add, &QPushButton::clicked, this, [this] {
        QList<Snippet> snippets = m_services.snippets.snippets();
        const Snippet added{QUuid::createUuid(), QStringLiteral("New snippet"), QString(), QString()};
        snippets.append(added);
        m_services.snippets.setSnippets(snippets);
        select(added.id);
    });
    connect(m_remove, &QPushButton::clicked, this, [this] {
        QList<Snippet> snippets = m_services.snippets.snippets();
        snippets.removeIf([this](const Snippet &snippet) { return m_selection && snippet.id == *m_selection; });
        m_selection.reset();
        m_services.snippets.setSnippets(snippets);
    });

    m_editor = new QStackedWidget(this);
    auto *empty = new QLabel(
        QStringLiteral("Snippets are pieces of text you paste from the launcher.\nSelect one, or add a new one."),
        m_editor);
    empty->setAlignment(Qt::AlignCenter);
    empty->setForegroundRole(QPalette::PlaceholderText);
    m_editor->addWidget(empty);

    auto *form = new QWidget(m_editor);
    auto *formLayout = new QFormLayout(form);
    formLayout->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    formLayout->setRowWrapPolicy(QFormLayout::WrapAllRows);
    m_name = new QLineEdit(form);
    m_keyword = new QLineEdit(form);
    m_text = new QPlainTextEdit(form);
    m_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    formLayout->addRow(QStringLiteral("Name"), m_name);
    formLayout->addRow(QStringLiteral("Keyword (type it in the launcher)"), m_keyword);
    formLayout->addRow(m_text);
    formLayout->addRow(
        SettingsForm::note(QStringLiteral("Placeholders: {date}  {time}  {datetime}  {clipboard}"), form));
    m_editor->addWidget(form);
    page->addWidget(m_editor, 1);

    connect(m_name, &QLineEdit::textEdited, this,
        [this](const QString &text) { edit([&text](Snippet &snippet) { snippet.name = text; }); });
    connect(m_keyword, &QLineEdit::textEdited, this,
        [this](const QString &text) { edit([&text](Snippet &snippet) { snippet.keyword = text; }); });
    connect(m_text, &QPlainTextEdit::textChanged, this, [this] {
        if (!m_filling)
            edit([text = m_text->toPlainText()](Snippet &snippet) { snippet.text = text; });
    });
    connect(&services.snippets, &SnippetStore::changed, this, [this] {
        showList();
        showEditor();
    });
    showList();
    showEditor();
}

void SnippetsTab::select(const std::optional<QUuid> &id)
{
    m_selection = findSnippet(m_services.snippets.snippets(), id) ? id : std::nullopt;
    showList();
    showEditor();
}

void SnippetsTab::showList()
{
    // Typing a snippet's text changes nothing the list shows: keep its rows.
    QStringList rows;
    for (const Snippet &snippet : m_services.snippets.snippets())
        rows << snippet.id.toString() + QLatin1Char('\n') + snippet.name + QLatin1Char('\n') + snippet.keyword;
    const bool same = rows == m_shownRows;
    m_shownRows = rows;
    m_filling = true;
    m_remove->setEnabled(m_selection.has_value());
    if (same) {
        for (int i = 0; i < m_list->count(); ++i) {
            if (m_selection && m_list->item(i)->data(idRole).toUuid() == *m_selection)
                m_list->setCurrentRow(i);
        }
        if (!m_selection)
            m_list->setCurrentRow(-1);
        m_filling = false;
        return;
    }
    m_list->clear();
    for (const Snippet &snippet : m_services.snippets.snippets()) {
        auto *item = new QListWidgetItem(m_list);
        item->setData(idRole, snippet.id);
        // The name, with the keyword under it in the secondary style.
        auto *row = new QWidget(m_list);
        auto *texts = new QVBoxLayout(row);
        texts->setContentsMargins(6, 4, 6, 4);
        texts->setSpacing(0);
        texts->addWidget(new QLabel(snippet.name.isEmpty() ? QStringLiteral("Untitled") : snippet.name, row));
        if (!snippet.keyword.isEmpty())
            texts->addWidget(SettingsForm::note(snippet.keyword, row));
        item->setSizeHint(row->sizeHint());
        m_list->setItemWidget(item, row);
        if (m_selection && snippet.id == *m_selection)
            m_list->setCurrentItem(item);
    }
    m_filling = false;
}

void SnippetsTab::showEditor()
{
    const Snippet *snippet = findSnippet(m_services.snippets.snippets(), m_selection);
    m_editor->setCurrentIndex(snippet ? 1 : 0);
    if (!snippet)
        return;
    m_filling = true;
    if (m_name->text() != snippet->name)
        m_name->setText(snippet->name);
    if (m_keyword->text() != snippet->keyword)
        m_keyword->setText(snippet->keyword);
    if (m_text->toPlainText() != snippet->text)
        m_text->setPlainText(snippet->text);
    m_filling = false;
}

void SnippetsTab::edit(const std::function<void(Snippet &)> &change)
{
    QList<Snippet> snippets = m_services.snippets.snippets();
    for (Snippet &snippet : snippets) {
        if (m_selection && snippet.id == *m_selection)
            change(snippet);
    }
    m_services.snippets.setSnippets(snippets);
}

} // namespace tessary

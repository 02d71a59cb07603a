#include "ui/launcher_view.h"

#include "core/launcher/launcher_model.h"
#include "ui/floating_panel.h"
#include "ui/launcher_list_model.h"
#include "ui/launcher_row_delegate.h"
#include "ui/symbol_icons.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>
#include <QVBoxLayout>

namespace tessary {

namespace {

constexpr int searchPadding = 18;
constexpr int searchSpacing = 12;
constexpr int searchIconSize = 22;
constexpr int fieldFontPixels = 22;
constexpr int listVerticalPadding = 6;
constexpr int listSideMargin = 8;

} // namespace

LauncherView::LauncherView(LauncherModel &model, QWidget *parent)
    : QWidget(parent)
    , m_model(model)
    , m_rows(new LauncherListModel(model, this))
    , m_field(new QLineEdit(this))
    , m_divider(new QFrame(this))
    , m_listBox(new QWidget(this))
    , m_list(new QListView(m_listBox))
{
    setAttribute(Qt::WA_TranslucentBackground);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);

    auto *search = new QWidget(this);
    search->setFixedHeight(int(LauncherModel::searchRowHeight));
    auto *searchRow = new QHBoxLayout(search);
    searchRow->setContentsMargins(searchPadding, 0, searchPadding, 0);
    searchRow->setSpacing(searchSpacing);
    auto *magnifier = new QLabel(search);
    magnifier->setPixmap(SymbolIcons::icon(QStringLiteral("magnifyingglass")).pixmap(searchIconSize, QIcon::Disabled));
    searchRow->addWidget(magnifier);
    QFont fieldFont = m_field->font();
    fieldFont.setPixelSize(fieldFontPixels);
    m_field->setFont(fieldFont);
    m_field->setFrame(false);
    m_field->setPlaceholderText(QString::fromUtf8(placeholder));
    m_field->setAttribute(Qt::WA_MacShowFocusRect, false);
    m_field->setStyleSheet(QStringLiteral("QLineEdit { background: transparent; }"));
    m_field->setText(model.query());
    m_field->installEventFilter(this);
    searchRow->addWidget(m_field, 1);
    column->addWidget(search);

    m_divider->setFrameShape(QFrame::HLine);
    m_divider->setFixedHeight(1);
    m_divider->setStyleSheet(QStringLiteral("QFrame { border: none; background: rgba(128, 128, 128, 60); }"));
    column->addWidget(m_divider);

    m_list->setModel(m_rows);
    m_list->setItemDelegate(new LauncherRowDelegate(*m_rows, m_list));
    m_list->setUniformItemSizes(true);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setFocusPolicy(Qt::NoFocus);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setSelectionMode(QAbstractItemView::NoSelection);
    m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_list->setStyleSheet(QStringLiteral("QListView { background: transparent; }"));
    m_list->viewport()->setAutoFillBackground(false);
    auto *listLayout = new QVBoxLayout(m_listBox);
    // The divider's point comes out of the top padding: rows start 66 + 6 down.
    listLayout->setContentsMargins(listSideMargin, listVerticalPadding - 1, listSideMargin, listVerticalPadding);
    listLayout->addWidget(m_list);
    column->addWidget(m_listBox, 1);

    connect(m_field, &QLineEdit::textChanged, &m_model, &LauncherModel::setQuery);
    connect(&m_model, &LauncherModel::queryChanged, m_field, [this](const QString &query) {
        if (m_field->text() != query)
            m_field->setText(query);
    });
    connect(&m_model, &LauncherModel::resultsChanged, this, &LauncherView::showRows);
    connect(&m_model, &LauncherModel::selectionChanged, this,
        [this](int selection) { m_list->scrollTo(m_rows->index(selection)); });
    connect(m_list, &QListView::clicked, this, [this](const QModelIndex &index) {
        m_model.select(index.row());
        m_model.activate(false);
    });
    showRows();
    setFocusProxy(m_field);
    m_field->setFocus();
}

void LauncherView::showRows()
{
    const bool any = !m_model.results().isEmpty();
    m_divider->setVisible(any);
    m_listBox->setVisible(any);
}

bool LauncherView::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_field || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    switch (key->key()) {
    case Qt::Key_Up:
        m_model.move(-1);
        return true;
    case Qt::Key_Down:
        m_model.move(1);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        m_model.activate(key->modifiers().testFlag(Qt::ControlModifier));
        return true;
    case Qt::Key_Escape:
        m_model.close();
        return true;
    default:
        return QWidget::eventFilter(watched, event);
    }
}

void LauncherView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF bounds = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath shape;
    shape.addRoundedRect(bounds, FloatingPanel::cornerRadius, FloatingPanel::cornerRadius);
    QColor material = palette().color(QPalette::Window);
    material.setAlpha(242);
    painter.fillPath(shape, material);
    painter.setPen(QPen(QColor(255, 255, 255, 31), 1));
    painter.drawPath(shape);
}

} // namespace tessary

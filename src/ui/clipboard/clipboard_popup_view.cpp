#include "ui/clipboard/clipboard_popup_view.h"

#include "core/clipboard/clip_popup_model.h"
#include "core/clipboard/clipboard_store.h"
#include "ui/clipboard/clip_list_model.h"
#include "ui/clipboard/clip_row_delegate.h"
#include "ui/clipboard/popup_style.h"
#include "ui/clipboard/thumbnail_cache.h"
#include "ui/floating_panel.h"
#include "ui/symbol_icons.h"

#include <QFileInfo>
#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QPainterPath>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <cmath>

namespace tessary {

namespace {

QLabel *symbolLabel(const QString &symbol, int side, const QPalette &palette, qreal scale)
{
    auto *label = new QLabel;
    label->setPixmap(PopupStyle::tinted(SymbolIcons::icon(symbol), side, PopupStyle::secondary(palette), scale));
    label->setFixedSize(side, side);
    return label;
}

QFrame *divider()
{
    auto *line = new QFrame;
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Plain);
    line->setFixedHeight(1);
    QPalette palette = line->palette();
    QColor color = palette.color(QPalette::WindowText);
    color.setAlphaF(0.12f);
    palette.setColor(QPalette::WindowText, color);
    line->setPalette(palette);
    return line;
}

void useSecondaryText(QLabel *label)
{
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, PopupStyle::secondary(palette));
    label->setPalette(palette);
}

} // namespace

ClipboardPopupView::ClipboardPopupView(ClipPopupModel &model, ClipboardStore &store, QWidget *parent)
    : QWidget(parent)
    , m_model(model)
    , m_store(store)
{
    setFixedHeight(height);
    setAttribute(Qt::WA_TranslucentBackground);
    const qreal scale = devicePixelRatioF();

    auto *searchBar = new QWidget;
    searchBar->setFixedHeight(54);
    auto *searchLayout = new QHBoxLayout(searchBar);
    searchLayout->setContentsMargins(16, 0, 16, 0);
    searchLayout->setSpacing(10);
    searchLayout->addWidget(symbolLabel(QStringLiteral("doc.on.clipboard"), 20, palette(), scale));
    m_field = new QLineEdit;
    m_field->setFrame(false);
    m_field->setFont(PopupStyle::font(18));
    m_field->setPlaceholderText(QString::fromUtf16(placeholder));
    m_field->setAttribute(Qt::WA_MacShowFocusRect, false);
    m_field->setStyleSheet(QStringLiteral("QLineEdit { background: transparent; }"));
    m_field->installEventFilter(this);
    searchLayout->addWidget(m_field);

    m_thumbnails = new ThumbnailCache(int(std::ceil(ClipRowDelegate::thumbnailSide * scale)), this);
    m_rows = new ClipListModel(model, this);
    m_list = new QListView;
    m_list->setModel(m_rows);
    m_list->setItemDelegate(new ClipRowDelegate(model, *m_rows, *m_thumbnails, store.imagesDirectory(), m_list));
    m_list->setUniformItemSizes(true);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setFocusPolicy(Qt::NoFocus);
    m_list->setSelectionMode(QAbstractItemView::NoSelection);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_list->viewport()->setAutoFillBackground(false);
    m_list->setStyleSheet(QStringLiteral("QListView { background: transparent; }"));
    auto *listBox = new QWidget;
    auto *listLayout = new QVBoxLayout(listBox);
    listLayout->setContentsMargins(6, 6, 6, 6);
    listLayout->addWidget(m_list);

    auto *empty = new QWidget;
    auto *emptyLayout = new QVBoxLayout(empty);
    emptyLayout->setSpacing(8);
    emptyLayout->addStretch();
    emptyLayout->addWidget(symbolLabel(QStringLiteral("tray"), 30, palette(), scale), 0, Qt::AlignHCenter);
    m_emptyLabel = new QLabel;
    m_emptyLabel->setFont(PopupStyle::font(13));
    useSecondaryText(m_emptyLabel);
    emptyLayout->addWidget(m_emptyLabel, 0, Qt::AlignHCenter);
    emptyLayout->addStretch();

    m_stack = new QStackedWidget;
    m_stack->addWidget(listBox);
    m_stack->addWidget(empty);

    auto *legendLabel = new QLabel(QString::fromUtf16(legend));
    legendLabel->setFixedHeight(28);
    legendLabel->setAlignment(Qt::AlignCenter);
    legendLabel->setFont(PopupStyle::font(11));
    useSecondaryText(legendLabel);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(searchBar);
    layout->addWidget(divider());
    layout->addWidget(m_stack, 1);
    layout->addWidget(divider());
    layout->addWidget(legendLabel);

    connect(m_field, &QLineEdit::textEdited, &model, &ClipPopupModel::setQuery);
    connect(m_rows, &QAbstractItemModel::modelReset, this, &ClipboardPopupView::showResultsOrEmptyState);
    connect(&model, &ClipPopupModel::selectionChanged, this, &ClipboardPopupView::followSelection);
    connect(m_thumbnails, &ThumbnailCache::finished, this, &ClipboardPopupView::repaintRowsShowing);
    connect(m_list, &QAbstractItemView::clicked, this, [this](const QModelIndex &index) {
        m_model.setSelection(index.row());
        m_model.choose(false);
    });
    showResultsOrEmptyState();
    // Whoever focuses the popup focuses the search field.
    setFocusProxy(m_field);
    m_field->setFocus();
}

ClipboardPopupView::~ClipboardPopupView() = default;

QString ClipboardPopupView::emptyText() const
{
    return m_stack->currentIndex() == 1 ? m_emptyLabel->text() : QString();
}

void ClipboardPopupView::showResultsOrEmptyState()
{
    if (m_rows->rowCount() > 0) {
        m_stack->setCurrentIndex(0);
        followSelection();
        return;
    }
    m_emptyLabel->setText(QString::fromUtf16(m_store.items().isEmpty() ? emptyHistory : noMatches));
    m_stack->setCurrentIndex(1);
}

void ClipboardPopupView::followSelection()
{
    const QModelIndex index = m_rows->index(m_model.selection());
    if (index.isValid())
        m_list->scrollTo(index);
    m_list->viewport()->update();
}

void ClipboardPopupView::repaintRowsShowing(const QString &path)
{
    const QString imageFile = QFileInfo(path).fileName();
    for (const int row : m_rows->rowsShowing(imageFile))
        m_list->update(m_rows->index(row));
}

bool ClipboardPopupView::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_field && event->type() == QEvent::KeyPress)
        return handleKey(static_cast<QKeyEvent *>(event));
    return QWidget::eventFilter(watched, event);
}

bool ClipboardPopupView::handleKey(QKeyEvent *event)
{
    const bool control = event->modifiers().testFlag(Qt::ControlModifier);
    switch (event->key()) {
    case Qt::Key_Up:
        m_model.move(-1);
        return true;
    case Qt::Key_Down:
        m_model.move(1);
        return true;
    case Qt::Key_Escape:
        m_model.close();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        m_model.choose(event->modifiers().testFlag(Qt::ShiftModifier));
        return true;
    case Qt::Key_Backspace:
        if (!control)
            return false;
        m_model.deleteCurrent();
        return true;
    case Qt::Key_P:
        if (!control)
            return false;
        // Held down, the pin would flicker on and off.
        if (!event->isAutoRepeat())
            m_model.togglePinCurrent();
        return true;
    default:
        return false;
    }
}

void ClipboardPopupView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath shape;
    shape.addRoundedRect(
        QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), FloatingPanel::cornerRadius, FloatingPanel::cornerRadius);
    QColor material = palette().color(QPalette::Window);
    material.setAlphaF(0.96f);
    painter.fillPath(shape, material);
    painter.setPen(QPen(QColor(255, 255, 255, 31), 1));
    painter.drawPath(shape);
}

} // namespace tessary

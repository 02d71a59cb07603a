#include "app/selftest/self_check_window.h"

#include "app/selftest/self_check_report.h"
#include "app/selftest/self_check_runner.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QFrame>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QScrollArea>
#include <QShortcut>
#include <QVBoxLayout>

namespace tessary {

namespace {

constexpr int iconSize = 18;

// A filled disc with a tick, an exclamation mark or a cross; grey and empty while pending.
QPixmap statusIcon(const std::optional<CheckResult::Status> &status, qreal scale)
{
    QPixmap pixmap(QSize(iconSize, iconSize) * scale);
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor color(0x9a, 0x9a, 0x9a);
    if (status == CheckResult::Status::pass)
        color = QColor(0x2e, 0x9d, 0x4f);
    else if (status == CheckResult::Status::warning)
        color = QColor(0xd9, 0x8e, 0x04);
    else if (status == CheckResult::Status::failure)
        color = QColor(0xd0, 0x31, 0x2d);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(QRectF(1, 1, iconSize - 2, iconSize - 2));
    painter.setPen(QPen(Qt::white, 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    if (status == CheckResult::Status::pass) {
        QPainterPath tick;
        tick.moveTo(5.2, 9.4);
        tick.lineTo(8, 12.2);
        tick.lineTo(13, 6.4);
        painter.drawPath(tick);
    } else if (status == CheckResult::Status::warning) {
        painter.drawLine(QPointF(9, 5), QPointF(9, 10.2));
        painter.drawPoint(QPointF(9, 13.4));
    } else if (status == CheckResult::Status::failure) {
        painter.drawLine(QPointF(6, 6), QPointF(12, 12));
        painter.drawLine(QPointF(12, 6), QPointF(6, 12));
    }
    return pixmap;
}

QLabel *wrapping(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    return label;
}

} // namespace

SelfCheckWindow::SelfCheckWindow(const SelfCheckRunner &runner, QWidget *parent)
    : QWidget(parent)
    , m_runner(runner)
{
    setWindowTitle(QStringLiteral("Tessary Self-Check"));
    auto *layout = new QVBoxLayout(this);
    auto *title = new QLabel(QStringLiteral("Tessary Self-Check"), this);
    QFont titleFont = title->font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.3);
    titleFont.setBold(true);
    title->setFont(titleFont);
    layout->addWidget(title);
    m_summary = new QLabel(this);
    layout->addWidget(m_summary);

    auto *scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::StyledPanel);
    auto *table = new QWidget(scroll);
    auto *grid = new QGridLayout(table);
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(10);
    grid->setColumnStretch(2, 1);
    const qreal scale = devicePixelRatioF();
    for (qsizetype i = 0; i < runner.size(); ++i) {
        auto *icon = new QLabel(table);
        icon->setPixmap(statusIcon(std::nullopt, scale));
        auto *name = new QLabel(runner.name(i), table);
        QFont bold = name->font();
        bold.setBold(true);
        name->setFont(bold);
        auto *cell = new QWidget(table);
        auto *cellLayout = new QVBoxLayout(cell);
        cellLayout->setContentsMargins(0, 0, 0, 0);
        cellLayout->setSpacing(2);
        Row row{icon, wrapping(QStringLiteral("Checking…"), cell), wrapping(QString(), cell)};
        row.remedy->setForegroundRole(QPalette::PlaceholderText);
        row.remedy->hide();
        cellLayout->addWidget(row.finding);
        cellLayout->addWidget(row.remedy);
        const int line = int(i);
        grid->addWidget(icon, line, 0, Qt::AlignTop);
        grid->addWidget(name, line, 1, Qt::AlignTop);
        grid->addWidget(cell, line, 2, Qt::AlignTop);
        m_rows.append(row);
    }
    grid->setRowStretch(int(runner.size()), 1);
    scroll->setWidget(table);
    layout->addWidget(scroll, 1);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton *copy = buttons->addButton(QStringLiteral("Copy Report"), QDialogButtonBox::ActionRole);
    connect(copy, &QPushButton::clicked, this, &SelfCheckWindow::copyReport);
    connect(buttons, &QDialogButtonBox::rejected, this, &QWidget::close);
    connect(new QShortcut(QKeySequence::Cancel, this), &QShortcut::activated, this, &QWidget::close);
    layout->addWidget(buttons);

    connect(&runner, &SelfCheckRunner::checked, this, &SelfCheckWindow::onChecked);
    connect(&runner, &SelfCheckRunner::finished, this, &SelfCheckWindow::updateSummary);
    updateSummary();
    resize(900, 680);
}

void SelfCheckWindow::onChecked(qsizetype index)
{
    const std::optional<CheckResult> &result = m_runner.result(index);
    const Row &row = m_rows.at(index);
    row.icon->setPixmap(statusIcon(result->status, devicePixelRatioF()));
    row.icon->setToolTip(statusName(result->status));
    row.finding->setText(result->finding);
    row.remedy->setText(QStringLiteral("What to do: ") + result->remedy);
    row.remedy->setVisible(!result->remedy.isEmpty());
    updateSummary();
}

void SelfCheckWindow::updateSummary()
{
    int done = 0;
    int counts[3] = {0, 0, 0};
    for (qsizetype i = 0; i < m_runner.size(); ++i) {
        if (const std::optional<CheckResult> &result = m_runner.result(i)) {
            ++done;
            ++counts[int(result->status)];
        }
    }
    if (done < m_runner.size()) {
        m_summary->setText(QStringLiteral("Checking… %1 of %2 done.").arg(done).arg(m_runner.size()));
        return;
    }
    m_summary->setText(QStringLiteral("%1 checks: %2 passed, %3 with warnings, %4 failed.")
                           .arg(done)
                           .arg(counts[int(CheckResult::Status::pass)])
                           .arg(counts[int(CheckResult::Status::warning)])
                           .arg(counts[int(CheckResult::Status::failure)]));
}

void SelfCheckWindow::copyReport()
{
    QGuiApplication::clipboard()->setText(QString::fromUtf8(SelfCheckReport::json(m_runner)));
}

} // namespace tessary

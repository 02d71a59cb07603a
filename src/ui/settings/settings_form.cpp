#include "ui/settings/settings_form.h"

#include <QGroupBox>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

namespace tessary::SettingsForm {

QGroupBox *section(const QString &title, QWidget *parent)
{
    auto *box = new QGroupBox(title, parent);
    auto *layout = new QVBoxLayout(box);
    layout->setSpacing(8);
    return box;
}

QVBoxLayout *sectionLayout(QGroupBox *section) { return static_cast<QVBoxLayout *>(section->layout()); }

QLabel *note(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setWordWrap(true);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * 0.9);
    label->setFont(font);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

QVBoxLayout *scrollingPage(QWidget *page)
{
    auto *outer = new QVBoxLayout(page);
    outer->setContentsMargins(0, 0, 0, 0);
    auto *scroll = new QScrollArea(page);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    auto *content = new QWidget(scroll);
    auto *layout = new QVBoxLayout(content);
    layout->setContentsMargins(16, 12, 16, 12);
    layout->setSpacing(12);
    scroll->setWidget(content);
    outer->addWidget(scroll);
    return layout;
}

QString warningStyle() { return QStringLiteral("color: #c46a00;"); }

QString errorStyle() { return QStringLiteral("color: #c01c28;"); }

} // namespace tessary::SettingsForm

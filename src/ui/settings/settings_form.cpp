#include "ui/settings/settings_form.h"

#include "ui/symbol_icons.h"

#include <QGroupBox>
#include <QIcon>
#include <QLabel>
#include <QScrollArea>
#include <QStyle>
#include <QToolButton>
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
    // Tab goes from the tab bar straight to the page's first control.
    scroll->setFocusPolicy(Qt::NoFocus);
    auto *content = new QWidget(scroll);
    auto *layout = new QVBoxLayout(content);
    layout->setContentsMargins(16, 12, 16, 12);
    layout->setSpacing(12);
    scroll->setWidget(content);
    outer->addWidget(scroll);
    return layout;
}

QIcon statusIcon(const QString &symbol, const QWidget *widget)
{
    for (const QString &name : SymbolIcons::themeNames(symbol)) {
        if (QIcon::hasThemeIcon(name))
            return SymbolIcons::icon(symbol);
    }
    const bool warning = symbol.startsWith(QLatin1String("exclamationmark"));
    return widget->style()->standardIcon(warning ? QStyle::SP_MessageBoxWarning : QStyle::SP_DialogApplyButton);
}

QToolButton *removeButton(QWidget *parent)
{
    auto *button = new QToolButton(parent);
    button->setIcon(SymbolIcons::icon(QStringLiteral("minus.circle")));
    button->setAutoRaise(true);
    button->setToolTip(QStringLiteral("Remove"));
    return button;
}

QString warningStyle() { return QStringLiteral("color: #c46a00;"); }

QString errorStyle() { return QStringLiteral("color: #c01c28;"); }

} // namespace tessary::SettingsForm

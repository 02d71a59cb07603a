#include "ui/settings/windows_tab.h"

#include "core/settings/app_settings.h"
#include "ui/settings/action_recorder.h"
#include "ui/settings/settings_form.h"
#include "ui/settings/settings_services.h"
#include "ui/symbol_icons.h"

#include <QCheckBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSlider>

#include <cmath>

namespace tessary {

WindowsTab::WindowsTab(const SettingsServices &services, QWidget *parent)
    : QWidget(parent)
    , m_services(services)
{
    auto *page = new QVBoxLayout(this);
    page->setContentsMargins(16, 12, 16, 12);

    auto *top = new QHBoxLayout;
    m_dragSnap = new QCheckBox(QStringLiteral("Snap when dragging a window to a screen edge"), this);
    connect(m_dragSnap, &QCheckBox::toggled, this, [this](bool on) {
        SettingsData record = m_services.settings.data();
        record.dragSnap = on;
        m_services.settings.setData(record);
    });
    auto *reset = new QPushButton(QStringLiteral("Reset shortcuts"), this);
    connect(reset, &QPushButton::clicked, this, [this] { m_services.settings.resetShortcuts(); });
    top->addWidget(m_dragSnap, 1);
    top->addWidget(reset);
    page->addLayout(top);

    auto *gapRow = new QHBoxLayout;
    m_gapText = new QLabel(this);
    m_gap = new QSlider(Qt::Horizontal, this);
    m_gap->setRange(0, 30);
    m_gap->setSingleStep(1);
    m_gap->setPageStep(1);
    m_gap->setFixedWidth(200);
    connect(m_gap, &QSlider::valueChanged, this, [this](int value) {
        SettingsData record = m_services.settings.data();
        record.gap = value;
        m_services.settings.setData(record);
    });
    gapRow->addWidget(m_gapText);
    gapRow->addWidget(m_gap);
    gapRow->addStretch(1);
    page->addLayout(gapRow);

    auto *scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    // Tab goes from the gap slider straight to the first recorder.
    scroll->setFocusPolicy(Qt::NoFocus);
    auto *list = new QWidget(scroll);
    list->setBackgroundRole(QPalette::Base);
    auto *rows = new QVBoxLayout(list);
    rows->setContentsMargins(8, 4, 8, 4);
    rows->setSpacing(0);
    for (HotAction action : HotActions::windowActions) {
        auto *row = new QWidget(list);
        row->setFixedHeight(32);
        auto *layout = new QHBoxLayout(row);
        layout->setContentsMargins(0, 0, 0, 0);
        auto *icon = new QLabel(row);
        icon->setPixmap(SymbolIcons::icon(iconName(action)).pixmap(16, 16));
        icon->setFixedWidth(22);
        icon->setAlignment(Qt::AlignCenter);
        icon->setEnabled(false);
        auto *warning = new QLabel(row);
        warning->setPixmap(
            SettingsForm::statusIcon(QStringLiteral("exclamationmark.triangle.fill"), warning).pixmap(16, 16));
        warning->setToolTip(QStringLiteral("This shortcut conflicts with another one."));
        layout->addWidget(icon);
        layout->addWidget(new QLabel(title(action), row), 1);
        layout->addWidget(warning);
        layout->addWidget(new ActionRecorder(services, action, row));
        m_warnings.insert(action, warning);
        rows->addWidget(row);
    }
    rows->addStretch(1);
    scroll->setWidget(list);
    page->addWidget(scroll, 1);

    connect(&services.settings, &AppSettings::changed, this, &WindowsTab::showSettings);
    showSettings();
}

void WindowsTab::setFailed(const QSet<HotAction> &failed)
{
    m_failed = failed;
    showSettings();
}

void WindowsTab::showSettings()
{
    const SettingsData &record = m_services.settings.data();
    const QSignalBlocker blockSnap(m_dragSnap);
    const QSignalBlocker blockGap(m_gap);
    m_dragSnap->setChecked(record.dragSnap);
    const int gap = int(std::lround(record.gap));
    m_gap->setValue(gap);
    m_gapText->setText(QStringLiteral("Gap around windows: %1 pt").arg(gap));
    const QSet<HotAction> duplicates = m_services.settings.duplicates();
    for (auto it = m_warnings.cbegin(); it != m_warnings.cend(); ++it)
        it.value()->setVisible(duplicates.contains(it.key()) || m_failed.contains(it.key()));
}

} // namespace tessary

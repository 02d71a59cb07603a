#pragma once

#include "core/app/hot_action.h"

#include <QHash>
#include <QSet>
#include <QWidget>

class QCheckBox;
class QLabel;
class QSlider;

namespace tessary {

struct SettingsServices;

// Drag snapping, the gap, and one shortcut row per window action with a
// warning where the shortcut collides or could not be registered.
class WindowsTab : public QWidget {
    Q_OBJECT

public:
    explicit WindowsTab(const SettingsServices &services, QWidget *parent = nullptr);

    void setFailed(const QSet<HotAction> &failed);
    // The warning symbol of `action`'s row.
    QLabel *warning(HotAction action) const { return m_warnings.value(action); }
    QSlider *gapSlider() const { return m_gap; }
    QLabel *gapText() const { return m_gapText; }

private:
    void showSettings();

    const SettingsServices &m_services;
    QCheckBox *m_dragSnap = nullptr;
    QSlider *m_gap = nullptr;
    QLabel *m_gapText = nullptr;
    QHash<HotAction, QLabel *> m_warnings;
    QSet<HotAction> m_failed;
};

} // namespace tessary

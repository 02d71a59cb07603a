#pragma once

#include "core/app/hot_action.h"
#include "ui/settings/shortcut_recorder.h"

namespace tessary {

struct SettingsServices;

// A recorder bound to one action's shortcut in the settings: it shows the
// effective combo, stores what the user records and suspends the hot keys
// while recording.
class ActionRecorder : public ShortcutRecorder {
    Q_OBJECT

public:
    ActionRecorder(const SettingsServices &services, HotAction action, QWidget *parent = nullptr);

    HotAction action() const { return m_action; }

private:
    const SettingsServices &m_services;
    HotAction m_action;
};

} // namespace tessary

#include "ui/settings/action_recorder.h"

#include "core/settings/app_settings.h"
#include "ui/settings/settings_services.h"

namespace tessary {

ActionRecorder::ActionRecorder(const SettingsServices &services, HotAction action, QWidget *parent)
    : ShortcutRecorder(services.keyPositions, parent)
    , m_services(services)
    , m_action(action)
{
    setObjectName(QStringLiteral("recorder.") + rawValue(action));
    setCombo(services.settings.combo(action));
    connect(&services.settings, &AppSettings::changed, this, [this] { setCombo(m_services.settings.combo(m_action)); });
    onChange = [this](const std::optional<KeyCombo> &combo) { m_services.settings.set(combo, m_action); };
    onRecording = [this](bool recording) {
        if (m_services.setSuspended)
            m_services.setSuspended(recording);
    };
}

} // namespace tessary

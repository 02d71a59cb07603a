#include "app/selftest/checks/shortcuts_check.h"

#include "app/selftest/x11_keyboard.h"
#include "core/settings/app_settings.h"
#include "platform/x11/windows/x11_hot_key_service.h"
#include "platform/x11/windows/x11_key_positions.h"

namespace tessary {

ShortcutsCheck::ShortcutsCheck(const SelfCheckContext &context)
    : SelfCheck(QStringLiteral("Shortcuts"))
    , m_context(context)
{
}

void ShortcutsCheck::run(Done done)
{
    if (m_context.otherInstanceRunning) {
        done(CheckResult::passed(QStringLiteral(
            "Tessary is running and holds its shortcuts; quit it and check again to test each combination.")));
        return;
    }
    if (!m_context.x11) {
        done(noDisplay(m_context));
        return;
    }
    X11KeyPositions positions(*m_context.x11);
    X11HotKeyService hotKeys(*m_context.x11, positions);
    const X11Keyboard keyboard(*m_context.x11);
    QStringList taken;
    QStringList missingKeys;
    int registered = 0;
    int unset = 0;
    for (const HotAction action : HotActions::allCases) {
        const std::optional<KeyCombo> combo = m_context.settings.combo(action);
        if (!combo) {
            ++unset;
            continue;
        }
        const QString named = QStringLiteral("%1 (%2)").arg(title(action), combo->display());
        if (const std::optional<quint64> reference = hotKeys.registerHotKey(*combo, 0)) {
            hotKeys.unregisterHotKey(*reference);
            ++registered;
        } else if (keyboard.hasKeyAt(combo->keyCode)) {
            taken.append(named);
        } else {
            missingKeys.append(named);
        }
    }
    QString finding
        = QStringLiteral("%1 of %2 can be registered").arg(registered).arg(HotActions::allCases.size() - unset);
    if (unset > 0)
        finding += QStringLiteral(", %1 not set").arg(unset);
    if (!taken.isEmpty())
        finding += QStringLiteral("; taken by another application: ") + taken.join(QStringLiteral(", "));
    if (!missingKeys.isEmpty())
        finding += QStringLiteral("; no such key on this keyboard: ") + missingKeys.join(QStringLiteral(", "));
    finding += QLatin1Char('.');
    if (!taken.isEmpty() || !missingKeys.isEmpty()) {
        done(CheckResult::failure(finding,
            QStringLiteral("Free the combination in the program that holds it (often the window manager's key "
                           "bindings) or give the action another shortcut in Settings.")));
        return;
    }
    done(CheckResult::passed(finding));
}

} // namespace tessary

#include "app/selftest/checks/keyboard_check.h"

#include "app/selftest/x11_keyboard.h"
#include "core/app/hot_action.h"

namespace tessary {

KeyboardCheck::KeyboardCheck(const SelfCheckContext &context)
    : SelfCheck(QStringLiteral("Keyboard layout"))
    , m_context(context)
{
}

void KeyboardCheck::run(Done done)
{
    if (!m_context.x11) {
        done(noDisplay(m_context));
        return;
    }
    const X11Keyboard keyboard(*m_context.x11);
    const std::optional<X11Keyboard::Names> names = keyboard.names();
    QString layout = names ? names->layout : QString();
    if (names && !names->variant.isEmpty())
        layout += QStringLiteral(" (%1)").arg(names->variant);
    if (layout.isEmpty())
        layout = QStringLiteral("unknown");
    QStringList missing;
    for (const HotAction action : HotActions::allCases) {
        const KeyCombo combo = defaultCombo(action);
        if (!keyboard.hasKeyAt(combo.keyCode))
            missing.append(QStringLiteral("%1 (%2)").arg(title(action), combo.display()));
    }
    if (!missing.isEmpty()) {
        done(CheckResult::failure(
            QStringLiteral("Layout %1 lacks the keys of %2.").arg(layout, missing.join(QStringLiteral(", "))),
            QStringLiteral("Give these actions shortcuts on keys this layout has, in Settings.")));
        return;
    }
    done(CheckResult::passed(QStringLiteral("Layout %1; every default shortcut's key exists on it.").arg(layout)));
}

} // namespace tessary

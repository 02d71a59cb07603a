#include "app/selftest/checks/session_end_check.h"

#include "app/selftest/x11_keyboard.h"
#include "core/settings/app_settings.h"

namespace tessary {

namespace {

constexpr QLatin1String terminateOption("terminate:ctrl_alt_bksp");
// Ctrl+Alt+Backspace as a stored combination: the Backspace position with control and option.
constexpr KeyCombo sessionEndCombo{51, KeyCombo::control | KeyCombo::option};

} // namespace

SessionEndCheck::SessionEndCheck(const SelfCheckContext &context)
    : SelfCheck(QStringLiteral("Ctrl+Alt+Backspace"))
    , m_context(context)
{
}

void SessionEndCheck::run(Done done)
{
    if (!m_context.x11) {
        done(noDisplay(m_context));
        return;
    }
    const std::optional<X11Keyboard::Names> names = X11Keyboard(*m_context.x11).names();
    const bool ends = names && names->options.contains(terminateOption);
    const bool isRestore = m_context.settings.combo(HotAction::restore) == sessionEndCombo;
    if (ends && isRestore) {
        done(CheckResult::failure(
            QStringLiteral("The keyboard option %1 ends the X session on Ctrl+Alt+Backspace, the Restore shortcut.")
                .arg(terminateOption),
            QStringLiteral("Turn the option off (setxkbmap -option, then set your other options again) or give "
                           "Restore another shortcut in Settings.")));
        return;
    }
    if (ends) {
        const std::optional<KeyCombo> restore = m_context.settings.combo(HotAction::restore);
        done(CheckResult::passed(QStringLiteral("Ctrl+Alt+Backspace ends the X session, but Restore uses %1.")
                                     .arg(restore ? restore->display() : QStringLiteral("no shortcut"))));
        return;
    }
    done(CheckResult::passed(QStringLiteral("Ctrl+Alt+Backspace does not end the X session.")));
}

} // namespace tessary

#include "platform/x11/app/paste_keystroke.h"

#include <QString>

#include <array>

namespace tessary {

namespace {

constexpr std::array primarySelectionTerminals = {
    QLatin1String("xterm"),
    QLatin1String("uxterm"),
    QLatin1String("urxvt"),
    QLatin1String("rxvt"),
};

constexpr std::array clipboardTerminals = {
    QLatin1String("gnome-terminal"),
    QLatin1String("gnome-terminal-server"),
    QLatin1String("org.gnome.console"),
    QLatin1String("kgx"),
    QLatin1String("org.gnome.ptyxis"),
    QLatin1String("konsole"),
    QLatin1String("yakuake"),
    QLatin1String("xfce4-terminal"),
    QLatin1String("mate-terminal"),
    QLatin1String("lxterminal"),
    QLatin1String("qterminal"),
    QLatin1String("terminator"),
    QLatin1String("tilix"),
    QLatin1String("terminology"),
    QLatin1String("sakura"),
    QLatin1String("guake"),
    QLatin1String("tilda"),
    QLatin1String("kitty"),
    QLatin1String("alacritty"),
    QLatin1String("wezterm"),
    QLatin1String("org.wezfurlong.wezterm"),
    QLatin1String("foot"),
    QLatin1String("st"),
    QLatin1String("st-256color"),
    QLatin1String("deepin-terminal"),
    QLatin1String("cool-retro-term"),
    QLatin1String("termite"),
};

template <std::size_t N>
bool names(const std::array<QLatin1String, N> &list, QStringView instanceName, QStringView className)
{
    for (QLatin1String name : list) {
        if (instanceName.compare(name, Qt::CaseInsensitive) == 0 || className.compare(name, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

} // namespace

PasteKeystroke pasteKeystrokeFor(QStringView instanceName, QStringView className)
{
    if (names(primarySelectionTerminals, instanceName, className))
        return PasteKeystroke::shiftInsertPrimary;
    if (names(clipboardTerminals, instanceName, className))
        return PasteKeystroke::controlShiftV;
    return PasteKeystroke::controlV;
}

} // namespace tessary

#pragma once

#include <QStringView>

namespace tessary {

// The keystroke that pastes the clipboard into a window, by its WM_CLASS.
enum class PasteKeystroke {
    controlV,
    // xterm and rxvt: Shift+Insert, which pastes the primary selection.
    shiftInsertPrimary,
    // Other terminal emulators.
    controlShiftV,
};

PasteKeystroke pasteKeystrokeFor(QStringView instanceName, QStringView className);

} // namespace tessary

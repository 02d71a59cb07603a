#pragma once

#include "core/shortcuts/key_combo.h"
#include "core/windows/layout.h"

#include <QString>
#include <QStringView>

#include <array>
#include <optional>

namespace tessary {

// Everything a global shortcut can do. allCases order is the order of hot key
// registration, of the collision search and of the menus.
enum class HotAction {
    leftHalf,
    rightHalf,
    topHalf,
    bottomHalf,
    topLeft,
    topRight,
    bottomLeft,
    bottomRight,
    firstThird,
    centerThird,
    lastThird,
    firstTwoThirds,
    lastTwoThirds,
    maximize,
    center,
    nextDisplay,
    previousDisplay,
    restore,
    launcher,
    clipboard,
};

namespace HotActions {
inline constexpr std::array<HotAction, 20> allCases = {
    HotAction::leftHalf,
    HotAction::rightHalf,
    HotAction::topHalf,
    HotAction::bottomHalf,
    HotAction::topLeft,
    HotAction::topRight,
    HotAction::bottomLeft,
    HotAction::bottomRight,
    HotAction::firstThird,
    HotAction::centerThird,
    HotAction::lastThird,
    HotAction::firstTwoThirds,
    HotAction::lastTwoThirds,
    HotAction::maximize,
    HotAction::center,
    HotAction::nextDisplay,
    HotAction::previousDisplay,
    HotAction::restore,
    HotAction::launcher,
    HotAction::clipboard,
};

// The actions listed as window actions (every case but launcher and clipboard).
inline constexpr std::array<HotAction, 18> windowActions = [] {
    std::array<HotAction, 18> actions{};
    for (std::size_t i = 0; i < actions.size(); ++i)
        actions[i] = allCases[i];
    return actions;
}();

std::optional<HotAction> fromRawValue(QStringView raw);
} // namespace HotActions

QString rawValue(HotAction action);
QString title(HotAction action);
KeyCombo defaultCombo(HotAction action);
// Symbol name shown beside the action in settings; empty for launcher and clipboard.
QString iconName(HotAction action);
// The layout a layout action applies, found by raw value.
std::optional<Layout> layoutFor(HotAction action);

inline size_t qHash(HotAction action, size_t seed = 0) { return ::qHash(static_cast<int>(action), seed); }

} // namespace tessary

#include "core/app/hot_action.h"

namespace tessary {

namespace {

constexpr std::uint32_t ctrlOpt = KeyCombo::control | KeyCombo::option;
constexpr std::uint32_t ctrlOptCmd = ctrlOpt | KeyCombo::command;

struct HotActionRow {
    const char *raw;
    std::uint32_t keyCode;
    std::uint32_t modifiers;
    const char *icon;
};

const HotActionRow &row(HotAction action)
{
    static const std::array<HotActionRow, 20> rows = {{
        {"leftHalf", 123, ctrlOpt, "rectangle.lefthalf.inset.filled"},
        {"rightHalf", 124, ctrlOpt, "rectangle.righthalf.inset.filled"},
        {"topHalf", 126, ctrlOpt, "rectangle.tophalf.inset.filled"},
        {"bottomHalf", 125, ctrlOpt, "rectangle.bottomhalf.inset.filled"},
        {"topLeft", 32, ctrlOpt, "rectangle.inset.topleft.filled"},
        {"topRight", 34, ctrlOpt, "rectangle.inset.topright.filled"},
        {"bottomLeft", 38, ctrlOpt, "rectangle.inset.bottomleft.filled"},
        {"bottomRight", 40, ctrlOpt, "rectangle.inset.bottomright.filled"},
        {"firstThird", 2, ctrlOpt, "rectangle.split.3x1"},
        {"centerThird", 3, ctrlOpt, "rectangle.split.3x1"},
        {"lastThird", 5, ctrlOpt, "rectangle.split.3x1"},
        {"firstTwoThirds", 14, ctrlOpt, "rectangle.split.3x1"},
        {"lastTwoThirds", 17, ctrlOpt, "rectangle.split.3x1"},
        {"maximize", 36, ctrlOpt, "rectangle.inset.filled"},
        {"center", 8, ctrlOpt, "rectangle.center.inset.filled"},
        {"nextDisplay", 124, ctrlOptCmd, "display.2"},
        {"previousDisplay", 123, ctrlOptCmd, "display.2"},
        {"restore", 51, ctrlOpt, "arrow.uturn.backward"},
        {"launcher", 49, ctrlOpt, ""},
        {"clipboard", 9, ctrlOpt, ""},
    }};
    return rows[static_cast<std::size_t>(action)];
}

} // namespace

std::optional<HotAction> HotActions::fromRawValue(QStringView raw)
{
    for (HotAction action : allCases) {
        if (raw == QLatin1String(row(action).raw))
            return action;
    }
    return std::nullopt;
}

QString rawValue(HotAction action) { return QString::fromLatin1(row(action).raw); }

std::optional<Layout> layoutFor(HotAction action) { return Layouts::fromRawValue(rawValue(action)); }

QString title(HotAction action)
{
    if (const auto layout = layoutFor(action))
        return title(*layout);
    switch (action) {
    case HotAction::nextDisplay:
        return QStringLiteral("Move to next display");
    case HotAction::previousDisplay:
        return QStringLiteral("Move to previous display");
    case HotAction::restore:
        return QStringLiteral("Restore previous size");
    case HotAction::launcher:
        return QStringLiteral("Open launcher");
    case HotAction::clipboard:
        return QStringLiteral("Open clipboard history");
    default:
        return {};
    }
}

KeyCombo defaultCombo(HotAction action) { return {row(action).keyCode, row(action).modifiers}; }

QString iconName(HotAction action) { return QString::fromLatin1(row(action).icon); }

} // namespace tessary

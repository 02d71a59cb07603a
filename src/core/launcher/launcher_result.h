#pragma once

#include <QString>

#include <functional>
#include <optional>

namespace tessary {

// One launcher row: what it shows, how it ranks and what it does. Actions
// capture what they need when the row is built.
struct LauncherResult {
    enum class Kind { app, file, calc, web, system, clipboard, snippet };

    // Stable identity and usage-count key: "calc", "web-<keyword>",
    // "web-fallback", "clip-<UUID>", "app-<path>", "sys-<id>", "snip-<UUID>",
    // "file-<path>".
    QString id;
    Kind kind = Kind::app;
    QString title;
    QString subtitle;
    // File whose icon the row shows (applications and files).
    std::optional<QString> iconPath;
    // Symbol image name shown when there is no icon path.
    std::optional<QString> symbol;
    // Higher ranks first.
    double score = 0;
    // Label of the primary action, shown on the selected row.
    QString hint;
    std::function<void()> primary;
    // Empty: the secondary key does the primary action.
    std::function<void()> secondary;
    std::optional<QString> secondaryHint;
};

// The kind's name in lower case: "app", "file", "calc", "web", "system", "clipboard", "snippet".
QString rawValue(LauncherResult::Kind kind);

} // namespace tessary

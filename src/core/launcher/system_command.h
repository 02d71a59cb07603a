#pragma once

#include "core/platform/process_launcher.h"
#include "core/platform/session_control.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace tessary {

// One operating-system action the launcher offers (sleep, dark mode, restart…).
// Ids, titles, keywords and symbols are the same on every platform, and so are
// the questions but for the name of the machine; only what runs differs.
struct SystemCommand {
    QString id;
    QString title;
    QStringList keywords;
    // A symbol image name ("moon.zzz"), mapped to an icon by the UI.
    QString symbol;
    // Asked before running; absent runs at once. Asking is the caller's job.
    std::optional<QString> confirm;

    // Starts the command's program(s); nothing is waited for.
    std::function<void(ProcessLauncher &launcher)> run;
    // Whether the launcher shows the command now; empty means always.
    std::function<bool()> offered;

    // macOS: programs started and forgotten, every command always offered.
    static QList<SystemCommand> macTable();
    // Every command through `session`, offered while the session offers it; a
    // failure reaches `report` with the command's fixed message. `session`
    // must outlive the commands.
    static QList<SystemCommand> sessionTable(
        SessionControl &session, std::function<void(const QString &message)> report);
};

} // namespace tessary

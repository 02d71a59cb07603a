#pragma once

#include "core/platform/process_launcher.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace tessary {

// One operating-system action the launcher offers (sleep, dark mode, restart…).
// Ids, titles, keywords and symbols are the same on every platform, and so are
// the questions but for the name of the machine; only the programs differ.
struct SystemCommand {
    QString id;
    QString title;
    QStringList keywords;
    // A symbol image name ("moon.zzz"), mapped to an icon by the UI.
    QString symbol;
    // Asked before running; absent runs at once. Asking is the caller's job.
    std::optional<QString> confirm;

    // Starts the command's program(s); nothing is waited for or reported.
    std::function<void(ProcessLauncher &launcher)> run;

    // This platform's table, built once on first use, in ranking tie-break
    // order. On Linux a command is offered only when its program is installed.
    static const QList<SystemCommand> &all();

    // Absolute path of an installed program named `name`, or empty.
    using ExecutableLookup = std::function<QString(const QString &name)>;
    static QList<SystemCommand> macTable();
    static QList<SystemCommand> linuxTable(const ExecutableLookup &findExecutable);
};

} // namespace tessary

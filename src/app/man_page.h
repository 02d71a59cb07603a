#pragma once

#include "app/command_line.h"

namespace tessary::ManPage {

// The tessary(1) page in troff's man macros, from the command-line definitions.
QString render(const QList<CommandLine::Command> &commands, const QString &version);

} // namespace tessary::ManPage

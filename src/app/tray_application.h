#pragma once

#include <QStringList>

namespace tessary {

// `arguments`: what the command line asks of the tray application (see
// CommandLine::Invocation::forwarded), handed to a running instance if any.
int runTrayApplication(int argc, char **argv, const QStringList &arguments);

} // namespace tessary

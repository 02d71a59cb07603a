#include "app/command_line.h"
#include "app/query_command.h"
#include "app/selftest/run_self_check.h"
#include "app/tray_application.h"

#include <cstdio>

int main(int argc, char **argv)
{
    using namespace tessary;
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    // Help, version and errors need no display and no application object.
    const CommandLine::Invocation invocation = CommandLine::parse(arguments);
    switch (invocation.mode) {
    case CommandLine::Mode::help:
    case CommandLine::Mode::version:
        std::fputs(invocation.message.toLocal8Bit().constData(), stdout);
        return 0;
    case CommandLine::Mode::error:
        std::fprintf(stderr, "%s\n", invocation.message.toLocal8Bit().constData());
        return 2;
    case CommandLine::Mode::query:
        return runQueryCommand(argc, argv, {invocation.text, invocation.json, invocation.files});
    case CommandLine::Mode::selftest:
        return runSelfCheck(argc, argv, invocation.json);
    case CommandLine::Mode::tray:
        break;
    }
    return runTrayApplication(argc, argv, invocation.forwarded);
}

#include "app/query_command.h"
#include "app/tray_application.h"

#include <cstring>

int main(int argc, char **argv)
{
    // `tessary query …` needs no display and starts no tray presence.
    if (argc > 1 && std::strcmp(argv[1], "query") == 0)
        return tessary::runQueryCommand(argc, argv);
    return tessary::runTrayApplication(argc, argv);
}

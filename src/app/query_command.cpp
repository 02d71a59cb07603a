#include "app/query_command.h"

#include <cstdio>

namespace tessary {

int runQueryCommand(int, char **)
{
    std::fputs("tessary: not built yet\n", stderr);
    return 1;
}

} // namespace tessary

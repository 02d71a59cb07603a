#include "app/tray_application.h"

#include <cstdio>

namespace tessary {

int runTrayApplication(int, char **)
{
    std::fputs("tessary: not built yet\n", stderr);
    return 1;
}

} // namespace tessary

#pragma once

namespace tessary {

int runQueryCommand(int argc, char **argv);

} // namespace tessary

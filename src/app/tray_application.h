#pragma once

namespace tessary {

int runTrayApplication(int argc, char **argv);

} // namespace tessary

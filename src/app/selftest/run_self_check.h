#pragma once

namespace tessary {

// `tessary --selftest [--json]`: runs every check instead of the normal
// start-up and shows them in a window, or prints them as JSON (`json`, or
// as text when there is no display to show a window on). Exits with 1 when
// a check failed, else 0.
int runSelfCheck(int argc, char **argv, bool json);

} // namespace tessary

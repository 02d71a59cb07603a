#pragma once

#include <QByteArray>

namespace tessary {

class SelfCheckRunner;

namespace SelfCheckReport {

// {"version": …, "checks": [{"name", "status", "finding", "remedy"?}, …]},
// indented, for bug reports and scripts.
QByteArray json(const SelfCheckRunner &runner);
// One block per check, for a terminal.
QByteArray text(const SelfCheckRunner &runner);

} // namespace SelfCheckReport

} // namespace tessary

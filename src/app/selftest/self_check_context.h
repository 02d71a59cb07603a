#pragma once

#include "app/selftest/check_result.h"

#include <QString>

namespace tessary {

class AppSettings;
class X11Connection;

// What the checks share: the session and the user's own state, read only.
struct SelfCheckContext {
    // Null without an X display; `displayProblem` then says why.
    X11Connection *x11 = nullptr;
    QString displayProblem;
    const AppSettings &settings;
    // Another Tessary serves this user and display (and holds the shortcuts).
    bool otherInstanceRunning = false;
    QString dataDirectory;
    QString logPath;
    QString homePath;
};

// The failure of a check that needs the X display when there is none.
inline CheckResult noDisplay(const SelfCheckContext &context)
{
    return CheckResult::failure(QStringLiteral("No X connection: ") + context.displayProblem,
        QStringLiteral("Run Tessary inside an X11 session, with DISPLAY naming its display."));
}

} // namespace tessary

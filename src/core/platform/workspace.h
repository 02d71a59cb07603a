#pragma once

#include "core/platform/running_app.h"

#include <QList>

#include <optional>

namespace tessary {

// The desktop's view of running applications. Main thread only.
class Workspace {
public:
    virtual ~Workspace() = default;

    virtual qint64 ownPid() const = 0;
    // The application of the active window; none when nothing is active.
    virtual std::optional<RunningApp> frontmostApplication() const = 0;
    // The application the user was last working in that is not this process
    // (macOS: the menu-bar owner); none when there is no such application.
    virtual std::optional<RunningApp> menuBarOwningApplication() const = 0;
    virtual QList<RunningApp> runningApplications() const = 0;
};

} // namespace tessary

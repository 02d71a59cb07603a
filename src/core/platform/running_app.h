#pragma once

#include <QString>

namespace tessary {

// An application with at least one window or process the desktop knows of.
// `id` is stable across runs: the bundle identifier on macOS; on X11 the
// desktop-entry id when one matches the window class, else the window class.
struct RunningApp {
    qint64 pid = 0;
    QString id;
    QString name;

    friend bool operator==(const RunningApp &, const RunningApp &) = default;
};

} // namespace tessary

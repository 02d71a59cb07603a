#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace tessary {

// Finds files under the user's home folder whose name contains a text (case-
// and diacritic-insensitive), most recently used first. Main thread only.
class FileSearchBackend {
public:
    virtual ~FileSearchBackend() = default;

    // Stops any running search, then starts one. `finished` runs once, later, on
    // the main thread with absolute paths, unless stop() or start() comes first.
    virtual void start(const QString &text, std::function<void(QStringList paths)> finished) = 0;
    // After this the running search never calls back.
    virtual void stop() = 0;
};

} // namespace tessary

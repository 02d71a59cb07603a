#pragma once

#include "core/launcher/launcher_result.h"

#include <QList>
#include <QString>

#include <functional>

namespace tessary {

// Where the launcher panel's rows come from (the engine; a scripted source in
// tests). Main thread only.
class LauncherSource {
public:
    virtual ~LauncherSource() = default;

    // The rows that can be computed at once, ranked.
    virtual QList<LauncherResult> quickResults(const QString &query) = 0;
    // File rows for `query`, delivered once, later; a newer call cancels the
    // previous one's delivery.
    virtual void fileResults(const QString &query, std::function<void(const QList<LauncherResult> &rows)> completion)
        = 0;
};

} // namespace tessary

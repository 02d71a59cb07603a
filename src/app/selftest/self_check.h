#pragma once

#include "app/selftest/check_result.h"

#include <QObject>

#include <functional>

namespace tessary {

// One thing the self-check looks at. A check reads and measures; it never
// writes settings, history, snippets or the log and never moves a window.
// Main thread only.
class SelfCheck : public QObject {
    Q_OBJECT

public:
    using Done = std::function<void(CheckResult)>;

    explicit SelfCheck(QString name)
        : m_name(std::move(name))
    {
    }

    const QString &name() const { return m_name; }
    // Calls `done` exactly once, at once or later from the event loop; a
    // check that waits on something gives up after a bounded time.
    virtual void run(Done done) = 0;

private:
    QString m_name;
};

} // namespace tessary

#pragma once

#include "core/platform/session_control.h"

#include <QList>
#include <QSet>

namespace tessary {

// Offers what the test says and records each action performed; the actions
// finish when the test says so.
class FakeSessionControl final : public SessionControl {
public:
    QSet<Action> offered;
    QList<Action> performed;

    bool offers(Action action) const override { return offered.contains(action); }
    void perform(Action action, std::function<void(bool ok)> done) override;

    // Ends the oldest unfinished action with `ok`.
    void finish(bool ok);

private:
    QList<std::function<void(bool)>> m_pending;
};

} // namespace tessary

#pragma once

#include "app/selftest/self_check.h"
#include "app/selftest/self_check_context.h"

#include <QElapsedTimer>

#include <memory>

namespace tessary {

class AppIndex;

// One full scan of the installed applications: how many and how long.
class AppIndexCheck final : public SelfCheck {
public:
    explicit AppIndexCheck(const SelfCheckContext &context);
    ~AppIndexCheck() override;
    void run(Done done) override;

    static constexpr int timeoutMs = 20000;

private:
    void finish(bool timedOut);

    Done m_done;
    std::unique_ptr<AppIndex> m_index;
    QElapsedTimer m_clock;
};

} // namespace tessary

#pragma once

#include "app/selftest/self_check.h"
#include "app/selftest/self_check_context.h"

#include <QElapsedTimer>

#include <memory>

namespace tessary {

class HomeWalkFileSearch;

// One file search by name, timed: that the backend answers at all, and how fast.
class FileSearchCheck final : public SelfCheck {
public:
    explicit FileSearchCheck(const SelfCheckContext &context);
    ~FileSearchCheck() override;
    void run(Done done) override;

    static constexpr int timeoutMs = 15000;

private:
    void finish(std::optional<qsizetype> found);

    const SelfCheckContext &m_context;
    Done m_done;
    std::unique_ptr<HomeWalkFileSearch> m_backend;
    QElapsedTimer m_clock;
};

} // namespace tessary

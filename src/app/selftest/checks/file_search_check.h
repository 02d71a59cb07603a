#pragma once

#include "app/selftest/self_check.h"
#include "app/selftest/self_check_context.h"

#include <QElapsedTimer>

#include <memory>

namespace tessary {

class DesktopFileSearchChain;

// One file search by name through what the launcher uses (the desktop's file
// index, else a walk of the home folder), timed: that it answers at all, and
// how fast.
class FileSearchCheck final : public SelfCheck {
public:
    explicit FileSearchCheck(const SelfCheckContext &context);
    ~FileSearchCheck() override;
    void run(Done done) override;

    static constexpr int timeoutMs = 15000;
    static constexpr int probeTimeoutMs = 2000;

private:
    void search();
    void finish(std::optional<qsizetype> found);

    const SelfCheckContext &m_context;
    Done m_done;
    std::unique_ptr<DesktopFileSearchChain> m_chain;
    QElapsedTimer m_clock;
};

} // namespace tessary

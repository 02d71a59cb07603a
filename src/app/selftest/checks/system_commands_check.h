#pragma once

#include "app/selftest/self_check.h"

#include <memory>

namespace tessary {

class DesktopSessionControl;
class DetachedProcessLauncher;

// Which system commands the launcher offers in this session, once the
// session's services have answered (or a few seconds went by).
class SystemCommandsCheck final : public SelfCheck {
public:
    SystemCommandsCheck();
    ~SystemCommandsCheck() override;
    void run(Done done) override;

    static constexpr int probeTimeoutMs = 5000;

private:
    void finish();

    Done m_done;
    std::unique_ptr<DetachedProcessLauncher> m_processes;
    std::unique_ptr<DesktopSessionControl> m_session;
};

} // namespace tessary

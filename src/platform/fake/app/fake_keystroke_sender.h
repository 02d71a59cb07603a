#pragma once

#include "core/platform/keystroke_sender.h"

namespace tessary {

// Counts what would have been posted; `posts` decides the reported outcome.
class FakeKeystrokeSender final : public KeystrokeSender {
public:
    void rememberTarget() override { ++remembered; }
    void sendPaste(std::function<void(bool posted)> done) override
    {
        ++pastes;
        if (done)
            done(posts);
    }

    int remembered = 0;
    int pastes = 0;
    bool posts = true;
};

} // namespace tessary

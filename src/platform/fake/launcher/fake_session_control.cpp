#include "platform/fake/launcher/fake_session_control.h"

namespace tessary {

void FakeSessionControl::perform(Action action, std::function<void(bool ok)> done)
{
    performed.append(action);
    m_pending.append(std::move(done));
}

void FakeSessionControl::finish(bool ok)
{
    if (!m_pending.isEmpty())
        m_pending.takeFirst()(ok);
}

} // namespace tessary

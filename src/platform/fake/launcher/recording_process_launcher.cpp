#include "platform/fake/launcher/recording_process_launcher.h"

namespace tessary {

bool RecordingProcessLauncher::start(const QString &program, const QStringList &arguments)
{
    m_calls.append({Call::Kind::start, program, arguments});
    return true;
}

std::optional<QByteArray> RecordingProcessLauncher::output(const QString &program, const QStringList &arguments)
{
    m_calls.append({Call::Kind::output, program, arguments});
    const auto it = m_outputs.constFind(program);
    return it == m_outputs.cend() ? std::nullopt : std::optional(*it);
}

} // namespace tessary

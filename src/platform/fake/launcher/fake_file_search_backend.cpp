#include "platform/fake/launcher/fake_file_search_backend.h"

namespace tessary {

void FakeFileSearchBackend::start(const QString &text, std::function<void(QStringList paths)> finished)
{
    stop();
    m_searches.append(Search{text, std::move(finished)});
}

void FakeFileSearchBackend::stop()
{
    if (!m_searches.isEmpty())
        m_searches.last().stopped = true;
}

void FakeFileSearchBackend::deliver(int index, const QStringList &paths)
{
    const auto finished = m_searches.at(index).finished;
    finished(paths);
}

} // namespace tessary

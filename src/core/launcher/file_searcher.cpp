#include "core/launcher/file_searcher.h"

#include <QPointer>

namespace tessary {

FileSearcher::FileSearcher(FileSearchBackend &backend, QString home, QObject *parent)
    : QObject(parent)
    , m_backend(backend)
    , m_home(std::move(home))
{
}

FileSearcher::~FileSearcher() { cancel(); }

void FileSearcher::search(const QString &text, int limit, Completion completion)
{
    cancel();
    m_limit = limit;
    m_completion = std::move(completion);
    const quint64 search = m_search;
    m_backend.start(text, [self = QPointer<FileSearcher>(this), search](const QStringList &paths) {
        if (self)
            self->onFinished(search, paths);
    });
}

void FileSearcher::cancel()
{
    m_backend.stop();
    m_completion = nullptr;
    ++m_search;
}

void FileSearcher::onFinished(quint64 search, const QStringList &paths)
{
    if (search != m_search || !m_completion)
        return;
    QList<QUrl> urls;
    for (const QString &path : paths) {
        if (urls.size() >= m_limit)
            break;
        if (isDeliverable(path, m_home))
            urls.append(QUrl::fromLocalFile(path));
    }
    const Completion completion = std::move(m_completion);
    cancel();
    completion(urls);
}

bool FileSearcher::isDeliverable(const QString &path, const QString &home)
{
    return !path.startsWith(home + QLatin1String("/Library/")) && !path.contains(QLatin1String("/."))
        && !path.contains(QLatin1String("/node_modules/")) && !path.contains(QLatin1String(".app/"));
}

} // namespace tessary

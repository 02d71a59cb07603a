#include "platform/x11/launcher/home_walk_file_search.h"

#include "core/launcher/background_task.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

#include <algorithm>

namespace tessary {

HomeWalkFileSearch::HomeWalkFileSearch(QString home, QObject *parent)
    : HomeWalkFileSearch(std::move(home), Bounds{}, parent)
{
}

HomeWalkFileSearch::HomeWalkFileSearch(QString home, Bounds bounds, QObject *parent)
    : QObject(parent)
    , m_home(std::move(home))
    , m_bounds(bounds)
{
}

HomeWalkFileSearch::~HomeWalkFileSearch() { stop(); }

void HomeWalkFileSearch::start(const QString &text, std::function<void(QStringList paths)> finished)
{
    stop();
    auto cancelled = std::make_shared<std::atomic_bool>(false);
    m_cancelled = cancelled;
    const QDateTime now = QDateTime::currentDateTimeUtc();
    std::shared_ptr<const Snapshot> reusable;
    if (m_snapshot && m_snapshotTime.secsTo(now) < m_bounds.reuseSeconds)
        reusable = m_snapshot;

    runInBackground(
        this,
        [home = m_home, bounds = m_bounds, text = folded(text), reusable, cancelled] {
            std::shared_ptr<const Snapshot> snapshot = reusable ? reusable : walk(home, bounds, *cancelled);
            return Answer{snapshot, match(*snapshot, text, bounds.maxResults)};
        },
        [this, cancelled, fresh = !reusable, now, finished = std::move(finished)](const Answer &answer) {
            if (*cancelled)
                return;
            if (fresh) {
                m_snapshot = answer.snapshot;
                m_snapshotTime = now;
            }
            m_cancelled.reset();
            finished(answer.paths);
        });
}

void HomeWalkFileSearch::stop()
{
    if (m_cancelled)
        *m_cancelled = true;
    m_cancelled.reset();
}

QString HomeWalkFileSearch::folded(const QString &text)
{
    const QString decomposed = text.normalized(QString::NormalizationForm_KD);
    QString result;
    result.reserve(decomposed.size());
    for (const QChar c : decomposed) {
        if (!c.isMark())
            result.append(c);
    }
    return result.toCaseFolded();
}

std::shared_ptr<const HomeWalkFileSearch::Snapshot> HomeWalkFileSearch::walk(
    const QString &home, const Bounds &bounds, const std::atomic_bool &cancelled)
{
    auto snapshot = std::make_shared<Snapshot>();
    // Breadth first, so that the bound cuts the deepest folders, not whole top-level ones.
    std::vector<std::pair<QString, int>> folders{{home, 0}};
    int looked = 0;
    for (size_t next = 0; next < folders.size() && looked < bounds.maxEntries && !cancelled; ++next) {
        const auto [folder, depth] = folders[next];
        QDirIterator items(folder, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System);
        while (items.hasNext() && looked < bounds.maxEntries) {
            items.next();
            ++looked;
            const QFileInfo info = items.fileInfo();
            if (info.isDir() && !info.isSymLink() && depth + 1 < bounds.maxDepth
                && info.fileName() != QLatin1String("node_modules"))
                folders.emplace_back(info.filePath(), depth + 1);
            const qint64 used = std::max(info.lastRead().toMSecsSinceEpoch(), info.lastModified().toMSecsSinceEpoch());
            snapshot->push_back(Item{info.filePath(), folded(info.fileName()), used});
        }
    }
    return snapshot;
}

QStringList HomeWalkFileSearch::match(const Snapshot &snapshot, const QString &foldedText, int maxResults)
{
    std::vector<const Item *> hits;
    for (const Item &item : snapshot) {
        if (item.foldedName.contains(foldedText))
            hits.push_back(&item);
    }
    const auto cut = hits.begin() + std::min<std::ptrdiff_t>(maxResults, std::ssize(hits));
    std::partial_sort(hits.begin(), cut, hits.end(), [](const Item *a, const Item *b) {
        return a->usedMsecs != b->usedMsecs ? a->usedMsecs > b->usedMsecs : a->path < b->path;
    });
    QStringList paths;
    for (auto it = hits.begin(); it != cut; ++it)
        paths.append((*it)->path);
    return paths;
}

} // namespace tessary

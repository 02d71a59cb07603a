#include "platform/x11/launcher/home_walk_file_search.h"

#include "core/launcher/background_task.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
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

QSet<QString> HomeWalkFileSearch::mountPointsBelow(const QByteArray &mountInfo, const QString &home)
{
    QSet<QString> points;
    const QString prefix = QDir::cleanPath(home) + QLatin1Char('/');
    for (const QByteArray &line : mountInfo.split('\n')) {
        // "36 35 98:0 /mnt1 /home/ann/share rw,noatime master:1 - ext3 /dev/root rw": the fifth field.
        const QList<QByteArray> fields = line.split(' ');
        if (fields.size() < 5)
            continue;
        QByteArray point = fields.at(4);
        // Spaces, tabs, newlines and backslashes come as three octal digits.
        for (qsizetype at = point.indexOf('\\'); at >= 0 && at + 3 < point.size(); at = point.indexOf('\\', at + 1))
            point.replace(at, 4, QByteArray(1, static_cast<char>(point.mid(at + 1, 3).toInt(nullptr, 8))));
        const QString path = QString::fromUtf8(point);
        if (path.startsWith(prefix))
            points.insert(path);
    }
    return points;
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
    // Other file systems are left alone: looking at the mount point of an
    // unreachable network share alone can block for minutes.
    QSet<QString> otherFileSystems;
    QFile mountInfo(QStringLiteral("/proc/self/mountinfo"));
    if (mountInfo.open(QIODevice::ReadOnly))
        otherFileSystems = mountPointsBelow(mountInfo.readAll(), home);
    // Breadth first, so that the bound cuts the deepest folders, not whole top-level ones.
    std::vector<std::pair<QString, int>> folders{{home, 0}};
    int looked = 0;
    for (size_t next = 0; next < folders.size() && looked < bounds.maxEntries && !cancelled; ++next) {
        const auto [folder, depth] = folders[next];
        QDirIterator items(folder, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System);
        while (items.hasNext() && looked < bounds.maxEntries) {
            if (otherFileSystems.contains(items.next()))
                continue;
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

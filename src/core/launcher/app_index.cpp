#include "core/launcher/app_index.h"

#include "core/launcher/background_task.h"

#include <QCollator>
#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <algorithm>

namespace tessary {

namespace {

class Walk {
public:
    explicit Walk(const ApplicationCatalog &catalog)
        : m_catalog(catalog)
        , m_suffix(catalog.entrySuffix())
    {
    }

    void root(const QString &root)
    {
        if (root.endsWith(m_suffix)) {
            add(root, root);
            return;
        }
        folder(root, root, 1);
    }

    QList<AppEntry> takeApps() { return std::move(m_apps); }

private:
    void folder(const QString &root, const QString &path, int depth)
    {
        // Sorted by file name so that equal display names keep a stable order.
        const QFileInfoList items = QDir(path).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
        for (const QFileInfo &item : items) {
            if (item.fileName().endsWith(m_suffix))
                add(root, item.filePath());
            else if (item.isDir() && depth < m_catalog.maxDepth())
                folder(root, item.filePath(), depth + 1);
        }
    }

    void add(const QString &root, const QString &path)
    {
        const QString key = m_catalog.entryKey(root, path);
        if (m_seen.contains(key))
            return;
        m_seen.insert(key);
        const std::optional<QString> name = m_catalog.displayName(path);
        if (!name)
            return;
        const QString fileName = QFileInfo(path).fileName().chopped(m_suffix.size());
        m_apps.append(AppEntry{*name, fileName, QUrl::fromLocalFile(path), m_catalog.otherNames(path)});
    }

    const ApplicationCatalog &m_catalog;
    const QString m_suffix;
    QSet<QString> m_seen;
    QList<AppEntry> m_apps;
};

} // namespace

AppIndex::AppIndex(std::shared_ptr<const ApplicationCatalog> catalog, QStringList folders, QObject *parent)
    : QObject(parent)
    , m_catalog(std::move(catalog))
    , m_folders(std::move(folders))
    , m_now([] { return QDateTime::currentDateTimeUtc(); })
{
}

QList<AppEntry> AppIndex::scan(const QStringList &roots, const ApplicationCatalog &catalog)
{
    Walk walk(catalog);
    for (const QString &root : roots)
        walk.root(root);
    QList<AppEntry> apps = walk.takeApps();

    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::stable_sort(apps.begin(), apps.end(),
        [&collator](const AppEntry &a, const AppEntry &b) { return collator.compare(a.name, b.name) < 0; });
    return apps;
}

void AppIndex::refresh(bool force)
{
    if (!force && m_lastScan && m_lastScan->secsTo(m_now()) < refreshIntervalSeconds)
        return;
    // The task owns a copy of the roots and a share of the catalog, nothing of this object.
    runInBackground(
        this, [catalog = m_catalog, roots = m_folders] { return scan(roots, *catalog); },
        [this](const QList<AppEntry> &apps) { onScanned(apps); });
}

void AppIndex::onScanned(const QList<AppEntry> &apps)
{
    m_apps = apps;
    m_lastScan = m_now();
    Q_EMIT scanned();
}

} // namespace tessary

#pragma once

#include "core/launcher/app_entry.h"
#include "core/platform/application_catalog.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

namespace tessary {

// The installed applications the launcher searches, sorted by name. Lives on
// the main thread; scans run on the global thread pool and replace `apps`
// wholesale on the main thread when they finish.
class AppIndex : public QObject {
    Q_OBJECT

public:
    static constexpr int refreshIntervalSeconds = 60;

    AppIndex(std::shared_ptr<const ApplicationCatalog> catalog, QStringList folders, QObject *parent = nullptr);

    const QList<AppEntry> &apps() const { return m_apps; }
    // When the last scan finished; none before the first.
    std::optional<QDateTime> lastScan() const { return m_lastScan; }
    const QStringList &folders() const { return m_folders; }

    // Starts a background scan, unless `force` is false and the last scan
    // finished under a minute ago. Overlapping scans all complete; the last to
    // finish wins.
    void refresh(bool force);

    // Synchronous walk of `roots` in order; any thread.
    static QList<AppEntry> scan(const QStringList &roots, const ApplicationCatalog &catalog);

    // The clock behind the refresh interval (tests).
    void setClock(std::function<QDateTime()> now) { m_now = std::move(now); }

Q_SIGNALS:
    // After `apps` and `lastScan` were replaced by a completed scan.
    void scanned();

private:
    void onScanned(const QList<AppEntry> &apps);

    std::shared_ptr<const ApplicationCatalog> m_catalog;
    QStringList m_folders;
    QList<AppEntry> m_apps;
    std::optional<QDateTime> m_lastScan;
    std::function<QDateTime()> m_now;
};

} // namespace tessary

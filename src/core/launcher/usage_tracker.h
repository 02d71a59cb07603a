#pragma once

#include "core/platform/key_value_store.h"

#include <QHash>
#include <QString>
#include <QStringList>

namespace tessary {

// How often each launcher result was run, written through to the defaults
// after every change so that frequently used rows rise. Counts only grow and
// stop at the largest int instead of wrapping. Main thread only; the store
// must outlive this object.
class UsageTracker {
public:
    static constexpr const char *storageKey = "tessary.launcher.usage";

    // A missing or mistyped stored value gives an empty tracker; nothing is
    // written until the first `record`.
    explicit UsageTracker(KeyValueStore &defaults);

    UsageTracker(const UsageTracker &) = delete;
    UsageTracker &operator=(const UsageTracker &) = delete;

    // Adds one use of `id` and stores all counts.
    void record(const QString &id);
    // 0 for an id never recorded.
    int count(const QString &id) const;
    // Every recorded id, highest count first (equal counts by id).
    QStringList topIDs() const;

private:
    KeyValueStore &m_defaults;
    QHash<QString, int> m_counts;
};

} // namespace tessary

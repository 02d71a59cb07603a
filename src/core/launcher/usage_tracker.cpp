#include "core/launcher/usage_tracker.h"

#include <algorithm>
#include <limits>

namespace tessary {

UsageTracker::UsageTracker(KeyValueStore &defaults)
    : m_defaults(defaults)
    , m_counts(defaults.intMap(QLatin1String(storageKey)).value_or(QHash<QString, int>()))
{
}

void UsageTracker::record(const QString &id)
{
    int &count = m_counts[id];
    if (count < std::numeric_limits<int>::max())
        ++count;
    m_defaults.setIntMap(QLatin1String(storageKey), m_counts);
}

int UsageTracker::count(const QString &id) const { return m_counts.value(id, 0); }

QStringList UsageTracker::topIDs() const
{
    QStringList ids = m_counts.keys();
    std::sort(ids.begin(), ids.end(), [this](const QString &a, const QString &b) {
        const int countA = m_counts.value(a);
        const int countB = m_counts.value(b);
        return countA != countB ? countA > countB : a < b;
    });
    return ids;
}

} // namespace tessary

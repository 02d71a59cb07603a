#pragma once

#include <QString>

#include <optional>

namespace tessary::Fuzzy {

// How well `query` matches `candidate`, on a ladder of tiers: exact 1000,
// prefix ~900, word start ~800, initials ~700, substring ~500, scattered
// letters ~200; within a tier shorter and earlier matches score higher.
// Penalties are not clamped, so very long names may drop below the next tier
// or below zero. Absent means no match. Both sides are lower-cased and compared
// per user-perceived character; only the query is trimmed. Pure; any thread.
std::optional<double> score(const QString &query, const QString &candidate);

} // namespace tessary::Fuzzy

#pragma once

#include <QString>

#include <benchmark/benchmark.h>

class QAbstractItemView;
class QLineEdit;

namespace tessary {

// One iteration per keystroke of `typed` (started again when it runs out):
// the key event into `field` and a synchronous repaint of `list`'s visible
// rows. Sets the median_ms and p90_ms counters.
void measureTyping(benchmark::State &state, QLineEdit *field, QAbstractItemView *list, const QString &typed);

} // namespace tessary

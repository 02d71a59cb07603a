#include "typing_benchmark.h"

#include <QAbstractItemView>
#include <QLineEdit>
#include <QTest>

#include <algorithm>
#include <chrono>
#include <vector>

namespace tessary {

void measureTyping(benchmark::State &state, QLineEdit *field, QAbstractItemView *list, const QString &typed)
{
    std::vector<double> millis;
    qsizetype next = 0;
    for (auto _ : state) {
        if (next == typed.size()) {
            field->clear();
            next = 0;
        }
        const auto start = std::chrono::steady_clock::now();
        QTest::keyClick(field, typed.at(next++).toLatin1());
        list->viewport()->repaint();
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(elapsed.count());
        millis.push_back(elapsed.count() * 1000);
    }
    if (millis.empty())
        return;
    std::sort(millis.begin(), millis.end());
    state.counters["median_ms"] = millis[millis.size() / 2];
    state.counters["p90_ms"] = millis[millis.size() * 9 / 10];
}

} // namespace tessary

#include "core/windows/geometry.h"

#include <benchmark/benchmark.h>

namespace tessary {
namespace {

// One snap's worth of geometry: resolve the cycle step, then compute its frame.
void BM_TargetAndResolve(benchmark::State &state)
{
    const Rect visible{0, 25, 1440, 875};
    const Rect current{10, 35, 705, 855};
    std::size_t i = 0;
    for (auto _ : state) {
        const Layout pressed = Layouts::allCases[i++ % Layouts::allCases.size()];
        const Layout layout = Geometry::resolve(pressed, current, visible, 10);
        benchmark::DoNotOptimize(Geometry::target(layout, visible, 10, current));
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
}
BENCHMARK(BM_TargetAndResolve);

} // namespace
} // namespace tessary

BENCHMARK_MAIN();

#include <QCoreApplication>

#include <benchmark/benchmark.h>

// For benchmarks of code that needs an application object (timers, queued
// calls, the thread pool's hand-back).
int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

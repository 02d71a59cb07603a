#include <QApplication>

#include <benchmark/benchmark.h>

// For benchmarks of widgets: on the offscreen platform unless QT_QPA_PLATFORM
// says otherwise.
int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

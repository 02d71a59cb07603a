// The file search used when the desktop runs no file index: a walk of a
// generated home folder (the first search), then searches answered from that
// walk while it is fresh.
#include "platform/x11/launcher/home_walk_file_search.h"

#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <map>
#include <memory>

namespace tessary {
namespace {

// `files` files spread over folders of 100, two levels deep, plus noise folders.
const QTemporaryDir &home(int files)
{
    static std::map<int, std::unique_ptr<QTemporaryDir>> homes;
    auto &dir = homes[files];
    if (dir)
        return *dir;
    dir = std::make_unique<QTemporaryDir>();
    for (int i = 0; i < files; ++i) {
        const QString folder = dir->filePath(QStringLiteral("projects/p%1/src%2").arg(i / 1000).arg(i / 100 % 10));
        if (i % 100 == 0)
            QDir().mkpath(folder);
        QFile(folder + QStringLiteral("/file%1-notes.txt").arg(i)).open(QIODevice::WriteOnly);
    }
    return *dir;
}

QStringList searchOnce(HomeWalkFileSearch &backend, const QString &text)
{
    QStringList found;
    QEventLoop loop;
    backend.start(text, [&](const QStringList &paths) {
        found = paths;
        loop.quit();
    });
    loop.exec();
    return found;
}

void firstSearchWalksHome(benchmark::State &state)
{
    const QString path = home(int(state.range(0))).path();
    for (auto _ : state) {
        HomeWalkFileSearch backend(path);
        benchmark::DoNotOptimize(searchOnce(backend, QStringLiteral("file123")));
    }
    state.counters["files"] = double(state.range(0));
}
BENCHMARK(firstSearchWalksHome)->Arg(10000)->Arg(50000)->Unit(benchmark::kMillisecond);

void laterSearchReusesTheWalk(benchmark::State &state)
{
    HomeWalkFileSearch backend(home(int(state.range(0))).path());
    searchOnce(backend, QStringLiteral("warm"));
    for (auto _ : state)
        benchmark::DoNotOptimize(searchOnce(backend, QStringLiteral("file123")));
}
BENCHMARK(laterSearchReusesTheWalk)->Arg(10000)->Arg(50000)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace tessary

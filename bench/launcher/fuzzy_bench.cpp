#include "core/launcher/calculator.h"
#include "core/launcher/fuzzy.h"

#include <QRandomGenerator>
#include <QStringList>

#include <benchmark/benchmark.h>

namespace tessary {
namespace {

using namespace Qt::StringLiterals;

struct Application {
    QString name;
    QString fileName;
};

// Names shaped like an installed desktop: one to four words, some with digits,
// punctuation or accents, and a reverse-domain file name.
const std::vector<Application> &applications(std::size_t count)
{
    static std::map<std::size_t, std::vector<Application>> cache;
    auto &apps = cache[count];
    if (!apps.empty())
        return apps;
    const QStringList words{u"Google"_s, u"Chrome"_s, u"Libre"_s, u"Office"_s, u"Writer"_s, u"Terminal"_s, u"Visual"_s,
        u"Studio"_s, u"Code"_s, u"Files"_s, u"Settings"_s, u"Disk"_s, u"Usage"_s, u"Analyzer"_s, u"Image"_s,
        u"Viewer"_s, u"Text"_s, u"Editor"_s, u"System"_s, u"Monitor"_s, u"Calculator"_s, u"Music"_s, u"Player"_s,
        u"Video"_s, u"Mail"_s, u"Calendar"_s, u"Photos"_s, u"Document"_s, u"Scanner"_s, u"Café"_s, u"Über"_s,
        u"Blender"_s, u"GIMP"_s, u"Inkscape"_s, u"Krita"_s, u"3D"_s, u"Pro"_s, u"2"_s, u"(Beta)"_s, u"Network"_s,
        u"Manager"_s, u"Bluetooth"_s, u"Printer"_s, u"Archive"_s, u"Character"_s, u"Map"_s};
    QRandomGenerator random(42);
    apps.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        QStringList parts;
        const int length = 1 + static_cast<int>(random.bounded(4));
        for (int w = 0; w < length; ++w)
            parts.append(words[static_cast<qsizetype>(random.bounded(words.size()))]);
        const QString name = parts.join(u' ');
        apps.push_back({name, u"org.example."_s + parts.join(QString()) + QString::number(i) + u".desktop"_s});
    }
    return apps;
}

// One keystroke of the launcher's application search: both names of every
// application, for each prefix of a typed word.
void BM_ApplicationKeystroke(benchmark::State &state)
{
    const auto &apps = applications(static_cast<std::size_t>(state.range(0)));
    const QStringList typed{u"t"_s, u"te"_s, u"ter"_s, u"term"_s, u"termi"_s, u"vsc"_s, u"café"_s, u"xyzq"_s};
    std::size_t keystroke = 0;
    for (auto _ : state) {
        const QString &query = typed[static_cast<qsizetype>(keystroke++ % typed.size())];
        int matches = 0;
        for (const Application &app : apps) {
            const double best
                = std::max(Fuzzy::score(query, app.name).value_or(-1), Fuzzy::score(query, app.fileName).value_or(-1));
            matches += best >= 0;
        }
        benchmark::DoNotOptimize(matches);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * apps.size() * 2));
}
BENCHMARK(BM_ApplicationKeystroke)->Arg(2000)->Arg(20000)->Unit(benchmark::kMicrosecond);

// Single calls per tier, ASCII and (through the grapheme path) accented text.
void BM_Score(benchmark::State &state, const QString &query, const QString &candidate)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(Fuzzy::score(query, candidate));
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
}
BENCHMARK_CAPTURE(BM_Score, prefix, u"saf"_s, u"Safari"_s);
BENCHMARK_CAPTURE(BM_Score, wordStart, u"code"_s, u"Visual Studio Code"_s);
BENCHMARK_CAPTURE(BM_Score, initials, u"vsc"_s, u"Visual Studio Code"_s);
BENCHMARK_CAPTURE(BM_Score, noMatch, u"xyzq"_s, u"LibreOffice Writer Document Viewer"_s);
BENCHMARK_CAPTURE(BM_Score, accentedNoMatch, u"xyzq"_s, u"Cafe\u0301 Übersetzer"_s);

void BM_CalculatorGate(benchmark::State &state, const QString &text)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(Calculator::forLauncher(text));
}
BENCHMARK_CAPTURE(BM_CalculatorGate, word, u"terminal"_s);
BENCHMARK_CAPTURE(BM_CalculatorGate, expression, u"sqrt(16)+200*15%-2^3^2"_s);

} // namespace
} // namespace tessary

BENCHMARK_MAIN();

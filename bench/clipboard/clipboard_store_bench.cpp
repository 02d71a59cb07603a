#include "core/clipboard/clipboard_store.h"
#include "platform/fake/clipboard/fake_pasteboard.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <memory>

namespace tessary {
namespace {

constexpr int historySize = 1000;

QString sampleText(int i)
{
    return QStringLiteral("Entry %1: the quick brown fox jumps over the lazy dog, then copies a sentence of about "
                          "a hundred and fifty characters from a browser window #%2")
        .arg(i)
        .arg(i * 7919);
}

// A history of `historySize` entries as the store writes it: mostly texts,
// some file lists and pictures (their files present), a few pinned.
void writeHistory(const QString &directory)
{
    QDir().mkpath(directory + QStringLiteral("/images"));
    QList<ClipItem> items;
    const QDateTime now = QDateTime::currentDateTimeUtc();
    for (int i = 0; i < historySize; ++i) {
        ClipItem item;
        item.id = QUuid::createUuid();
        item.date = now.addSecs(-60 * i);
        item.pinned = i % 100 == 0;
        item.sourceApp = QStringLiteral("org.mozilla.firefox");
        if (i % 20 == 1) {
            item.kind = ClipItem::Kind::image;
            item.hash = ClipboardStore::hash(QStringLiteral("image"), QByteArray::number(i));
            item.imageFile = item.hash.left(24) + QStringLiteral(".png");
            item.pixelWidth = 1280;
            item.pixelHeight = 720;
            QFile png(directory + QStringLiteral("/images/") + *item.imageFile);
            png.open(QIODevice::WriteOnly);
        } else if (i % 20 == 2) {
            item.kind = ClipItem::Kind::files;
            item.files = QStringList{QStringLiteral("/home/user/Documents/report-%1.pdf").arg(i)};
            item.hash = ClipboardStore::hash(QStringLiteral("files"), item.files->join(u'\n'));
        } else {
            item.text = sampleText(i);
            item.hash = ClipboardStore::hash(QStringLiteral("text"), *item.text);
        }
        items.append(std::move(item));
    }
    QFile file(directory + QStringLiteral("/clipboard.json"));
    file.open(QIODevice::WriteOnly);
    file.write(ClipItem::listToJson(items));
}

struct History {
    History()
    {
        writeHistory(temp.path());
        store = std::make_unique<ClipboardStore>(temp.path(), pasteboard);
        // Full: every recorded copy pushes the oldest unpinned entry out.
        store->maxItems = int(std::count_if(
            store->items().cbegin(), store->items().cend(), [](const ClipItem &item) { return !item.pinned; }));
        store->retentionDays = 0;
    }
    QTemporaryDir temp;
    FakePasteboard pasteboard;
    std::unique_ptr<ClipboardStore> store;
};

void BM_PollUnchanged(benchmark::State &state)
{
    History history;
    for (auto _ : state)
        history.store->poll();
}
BENCHMARK(BM_PollUnchanged);

// A new text at the top of a full history: read, hash, fold, prune, save.
void BM_RecordTextWithSave(benchmark::State &state)
{
    History history;
    int i = 0;
    for (auto _ : state) {
        state.PauseTiming();
        history.pasteboard.copyText(sampleText(historySize + i++));
        state.ResumeTiming();
        history.store->poll();
        history.store->waitForSaved();
    }
    if (history.store->items().size() != historySize)
        state.SkipWithError("the history did not stay full");
}
// Process CPU time: the file is written on the store's writer thread.
BENCHMARK(BM_RecordTextWithSave)->Unit(benchmark::kMicrosecond)->MeasureProcessCPUTime();

void BM_Load(benchmark::State &state)
{
    QTemporaryDir temp;
    writeHistory(temp.path());
    FakePasteboard pasteboard;
    for (auto _ : state) {
        ClipboardStore store(temp.path(), pasteboard);
        benchmark::DoNotOptimize(store.items().size());
    }
}
BENCHMARK(BM_Load)->Unit(benchmark::kMicrosecond);

void BM_Search(benchmark::State &state)
{
    History history;
    const QString queries[] = {QStringLiteral("fox"), QStringLiteral("lazy 4711"), QStringLiteral("report pdf"),
        QStringLiteral("nothing matches this")};
    int i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(history.store->search(queries[i++ % 4]));
}
BENCHMARK(BM_Search)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace tessary

/// What the history costs as it grows: encoding, reading, writing, searching, and what a change costs the main thread.
#include "HistoryFile.h"
#include "HistoryManager.h"
#include "HistorySearch.h"
#include "MainQueue.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

/// Starred entries of 500 characters, half of them in each text.
QList<HistoryItem> entries(int64_t count)
{
    QList<HistoryItem> items;
    for (int64_t i = 0; i < count; ++i) {
        items.append(newHistoryItem(u"The lighthouse keeper %1 "_s.arg(i).repeated(20).left(250),
                                    u"燈塔看守人第 %1 封信"_s.arg(i).repeated(30).left(250)));
        items.last().isStarred = true;
    }
    return items;
}

void encode(benchmark::State &state)
{
    const auto items = entries(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(encodeHistory(items));
}

void encodeAndWrite(benchmark::State &state)
{
    const QTemporaryDir folder;
    const auto items = entries(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(writeHistoryFile(folder.filePath(u"history.json"_s), items));
}

void load(benchmark::State &state)
{
    const QTemporaryDir folder;
    (void)writeHistoryFile(folder.filePath(u"history.json"_s), entries(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(readHistoryFile(folder.filePath(u"history.json"_s)));
}

/// One star more on the main thread; the writing goes on beside it.
void changeOnMainThread(benchmark::State &state)
{
    const QTemporaryDir folder;
    MainQueue queue;
    (void)writeHistoryFile(folder.filePath(u"history.json"_s), entries(state.range(0)));
    HistoryManager manager(folder.filePath(u"history.json"_s), queue, nullptr);
    queue.drain();
    const QUuid last = manager.history().last().id;
    for (auto _ : state)
        manager.toggleStar(last);
}

/// The first keystroke folds every text; the later ones search what is folded.
void search(benchmark::State &state, const QString &text)
{
    const auto items = entries(state.range(0));
    QStringList folded;
    const HistorySearch tested(text);
    for (const HistoryItem &item : items)
        folded.append(tested.folded(item));
    for (auto _ : state) {
        int found = 0;
        for (const QString &each : folded)
            found += tested.matchesFolded(each) ? 1 : 0;
        benchmark::DoNotOptimize(found);
    }
}

void firstSearch(benchmark::State &state)
{
    const auto items = entries(state.range(0));
    const HistorySearch tested(u"keeper"_s);
    for (auto _ : state) {
        for (const HistoryItem &item : items)
            benchmark::DoNotOptimize(tested.folded(item));
    }
}

BENCHMARK(encode)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(encodeAndWrite)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(load)->Arg(1000)->Arg(20000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(changeOnMainThread)->Arg(1000)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(search, everywhere, u"k"_s)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(search, nowhere, u"keeperz"_s)->Arg(20000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(firstSearch)->Arg(20000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();

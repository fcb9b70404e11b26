/// How long the history's window holds its event loop as the history grows: at each keystroke of a search, while the
/// search goes on beside it, at a change of the store, and while the list scrolls. Each is taken up to the last pixel.
#include "HistoryFile.h"
#include "HistoryListView.h"
#include "HistoryManager.h"
#include "HistoryView.h"
#include "LocalizationManager.h"
#include "MainQueue.h"
#include "Scheduler.h"
#include "SettingsStore.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QScrollBar>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>

using namespace lucentra;
using namespace Qt::StringLiterals;

namespace {

/// A window over starred entries of 500 characters, half of them in each text.
struct Window
{
    explicit Window(int64_t count)
    {
        QList<HistoryItem> items;
        for (int64_t i = 0; i < count; ++i) {
            items.append(newHistoryItem(u"The lighthouse keeper %1 "_s.arg(i).repeated(20).left(250),
                                        u"燈塔看守人第 %1 封信"_s.arg(i).repeated(30).left(250)));
            items.last().isStarred = true;
        }
        (void)writeHistoryFile(path, items);
        manager = std::make_unique<HistoryManager>(path, queue, nullptr);
        queue.drain();
        view = std::make_unique<HistoryView>(*manager, texts, scheduler);
        view->resize(450, 600);
        view->show();
        settle();
    }

    /// Lets everything happen that is due. The longest time, in seconds, that the event loop was held at a stretch.
    double settle()
    {
        double longest = 0;
        QElapsedTimer timer;
        timer.start();
        while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents))
            longest = std::max(longest, double(timer.nsecsElapsed()) * 1e-9), timer.start();
        return longest;
    }

    QTemporaryDir folder;
    QString path = folder.filePath(u"history.json"_s);
    SettingsStore settings{folder.filePath(u"preferences.json"_s)};
    LocalizationManager texts{settings, folder.path(), {u"en"_s}};
    MainQueue queue;
    EventLoopScheduler scheduler;
    std::unique_ptr<HistoryManager> manager;
    std::unique_ptr<HistoryView> view;
};

void keystroke(benchmark::State &state, const QString &before, const QString &after)
{
    Window window(state.range(0));
    auto *search = window.view->findChild<QLineEdit *>();
    double longest = 0;
    double whole = 0;
    for (auto _ : state) {
        search->clear();
        window.settle();
        search->setText(before);
        window.settle();
        QElapsedTimer timer;
        timer.start();
        search->setText(after);
        const double typed = double(timer.nsecsElapsed()) * 1e-9;
        longest = std::max({longest, typed, window.settle()});
        whole = std::max(whole, double(timer.nsecsElapsed()) * 1e-9);
        state.SetIterationTime(typed);
    }
    state.counters["longest_ms"] = longest * 1e3; ///< at a stretch
    state.counters["all_found_ms"] = whole * 1e3;
}

void scroll(benchmark::State &state)
{
    Window window(state.range(0));
    QScrollBar *bar = window.view->findChild<HistoryListView *>()->verticalScrollBar();
    double longest = 0;
    for (auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        bar->setValue((bar->value() + 120) % bar->maximum()); // three steps of the wheel
        window.settle();
        const double frame = double(timer.nsecsElapsed()) * 1e-9;
        longest = std::max(longest, frame);
        state.SetIterationTime(frame);
    }
    state.counters["longest_ms"] = longest * 1e3;
}

/// A star while the window is open: the store's part, the list's and the painting.
void change(benchmark::State &state)
{
    Window window(state.range(0));
    const QUuid id = window.manager->history().at(2).id;
    for (auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        window.manager->toggleStar(id);
        window.settle();
        state.SetIterationTime(double(timer.nsecsElapsed()) * 1e-9);
    }
}

BENCHMARK_CAPTURE(keystroke, first, QString(), u"k"_s)
    ->Arg(1000)
    ->Arg(20000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(10);
BENCHMARK_CAPTURE(keystroke, first_found_nowhere, QString(), u"zz"_s)
    ->Arg(20000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(10);
BENCHMARK_CAPTURE(keystroke, second, u"k"_s, u"ke"_s)
    ->Arg(1000)
    ->Arg(20000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(10);
BENCHMARK(change)->Arg(1000)->Arg(20000)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(50);
BENCHMARK(scroll)->Arg(1000)->Arg(20000)->Arg(100000)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(300);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

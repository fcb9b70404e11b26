// Measures a translation model: neural-rates FOLDER [LENGTH-FACTOR] < sentences. Times of one thread are those of the
// processor, so that other programs on the machine count little; times of a pass are those of the clock.

#include "NeuralModel.h"

#include <QTextStream>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <string>
#include <vector>

using namespace lucentra;

namespace {

double milliseconds(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

/// Median, least and most of several runs, in milliseconds.
void printTimes(const char *title, clockid_t clock, int runs, const std::function<void()> &work)
{
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        const double start = milliseconds(clock);
        work();
        times.push_back(milliseconds(clock) - start);
    }
    std::sort(times.begin(), times.end());
    std::printf("%-44s %8.1f ms (%.1f to %.1f)\n", title, times[times.size() / 2], times.front(), times.back());
}

/// In MB: all that is resident, or what isn't a mapped file of it.
double resident(bool isPrivate)
{
    std::FILE *const file = std::fopen("/proc/self/statm", "r");
    long total = 0;
    long all = 0;
    long shared = 0;
    if (!file || std::fscanf(file, "%ld %ld %ld", &total, &all, &shared) != 3)
        all = shared = 0;
    if (file)
        std::fclose(file);
    return double(isPrivate ? all - shared : all) * 4096 / 1e6;
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc < 2) {
        std::fprintf(stderr, "neural-rates FOLDER [LENGTH-FACTOR] < sentences\n");
        return 1;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const double factor = argc > 2 ? QByteArray(argv[2]).toDouble() : 2;
    QStringList sentences;
    QTextStream input(stdin);
    for (QString line; input.readLineInto(&line);)
        sentences.append(line);

    const double before = resident(false);
    const double ownBefore = resident(true);
    tl::expected<std::shared_ptr<const NeuralModel>, NeuralModelError> model;
    printTimes("load", CLOCK_MONOTONIC, 1, [&] { model = NeuralModel::open(folder); });
    if (!model) {
        std::fprintf(stderr, "%s\n", qPrintable(model.error().detail));
        return 1;
    }
    const auto translate = [&](const QStringList &lines, int threads) {
        (*model)->translate(lines, {.lengthFactor = factor, .threads = threads});
    };
    translate(sentences, 0);
    std::printf("%-44s %8.1f MB, of which %.1f MB aren't the mapped files\n", "memory after the first pass",
                resident(false) - before, resident(true) - ownBefore);
    qsizetype next = 0;
    printTimes("one sentence, one thread", CLOCK_PROCESS_CPUTIME_ID, 100,
               [&] { translate({sentences[next++ % sentences.size()]}, 1); });
    printTimes("all as one pass, a thread per processor", CLOCK_MONOTONIC, 15, [&] { translate(sentences, 0); });
    for (const int size : {1, 2, 5, 10, 20}) {
        const double start = milliseconds(CLOCK_PROCESS_CPUTIME_ID);
        for (qsizetype at = 0; at < sentences.size(); at += size)
            translate(sentences.mid(at, size), 1);
        const double seconds = (milliseconds(CLOCK_PROCESS_CPUTIME_ID) - start) / 1e3;
        std::printf("%-44s %8.1f sentences per second\n", ("together on one thread: " + std::to_string(size)).c_str(),
                    double(sentences.size()) / seconds);
    }
    return 0;
}

// Measures a translation model: neural-rates FOLDER LENGTH-FACTOR RUNS < sentences. Prints a line per figure: its name, and
// least and median of the runs by the clock and by the processor, in milliseconds; for "memory", MB.

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

/// The processor's time is that of all threads.
void printTimes(const std::string &name, int runs, const std::function<void()> &work)
{
    std::vector<double> clock;
    std::vector<double> processor;
    for (int run = 0; run < runs; ++run) {
        const double clockStart = milliseconds(CLOCK_MONOTONIC);
        const double processorStart = milliseconds(CLOCK_PROCESS_CPUTIME_ID);
        work();
        clock.push_back(milliseconds(CLOCK_MONOTONIC) - clockStart);
        processor.push_back(milliseconds(CLOCK_PROCESS_CPUTIME_ID) - processorStart);
    }
    std::printf("%s", name.c_str());
    for (std::vector<double> *times : {&clock, &processor}) {
        std::sort(times->begin(), times->end());
        std::printf("\t%.2f\t%.2f", times->front(), (*times)[times->size() / 2]);
    }
    std::printf("\n");
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
    if (argc != 4) {
        std::fprintf(stderr, "neural-rates FOLDER LENGTH-FACTOR RUNS < sentences\n");
        return 1;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const double factor = QByteArray(argv[2]).toDouble();
    const int runs = std::max(1, QByteArray(argv[3]).toInt());
    QStringList sentences;
    QTextStream input(stdin);
    for (QString line; input.readLineInto(&line);)
        sentences.append(line);

    const double before = resident(false);
    const double ownBefore = resident(true);
    const auto model = NeuralModel::open(folder);
    if (!model) {
        std::fprintf(stderr, "%s\n", qPrintable(model.error().detail));
        return 1;
    }
    const auto translate = [&](const QStringList &lines, int threads) {
        (*model)->translate(lines, {.lengthFactor = factor, .threads = threads});
    };
    constexpr int passThreads = 2;
    translate(sentences, passThreads);
    std::printf("memory\t%.1f\t%.1f\n", resident(false) - before, resident(true) - ownBefore);
    printTimes("load", runs, [&] { NeuralModel::open(folder); });
    qsizetype next = 0;
    printTimes("sentence", 5 * runs, [&] { translate({sentences[next++ % sentences.size()]}, 1); });
    printTimes("pass", runs, [&] { translate(sentences, passThreads); });
    for (const int size : {1, 2, 5, 10, 20}) {
        printTimes("together " + std::to_string(size), std::max(1, runs / 3), [&] {
            for (qsizetype at = 0; at < sentences.size(); at += size)
                translate(sentences.mid(at, size), 1);
        });
    }
    return 0;
}

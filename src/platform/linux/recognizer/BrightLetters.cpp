#include "BrightLetters.h"

#include "Runs.h"

#include <algorithm>

namespace lucentra {
namespace {

constexpr int dark = 130;                   // an outline, a shadow
constexpr int outlineReach = 2;             // pixels from the letter to where its outline is darkest
constexpr int tallest = 90;                 // pixels
constexpr int widest = 160;                 // pixels; more than one letter may hang together
constexpr int smallest = 4;                 // pixels in all
constexpr std::size_t most = 8000;          // shapes
constexpr std::size_t mostRuns = 2'000'000; // rows of bright pixels side by side

/// Bright pixels that hang together side by side.
struct Spot
{
    QRect ink;
    int pixels = 0;
    int brightest = 0;
    int around = 0;     // pixels beside it
    int darkAround = 0; // of those, how many have a dark one behind them

    bool isOfLettersSize() const { return pixels >= smallest && ink.height() <= tallest && ink.width() <= widest; }
    bool isLetter() const { return around > 0 && 4 * darkAround >= 3 * around; }
};

/// None where there are too many.
std::vector<Run> brightRunsIn(const QImage &image)
{
    std::vector<Run> runs;
    for (int y = 0; y < image.height() && runs.size() <= mostRuns; ++y) {
        const auto *row = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            if (levelOf(row[x]) < brightLevel)
                continue;
            const int start = x;
            while (x < image.width() && levelOf(row[x]) >= brightLevel)
                ++x;
            runs.push_back({y, start, x - 1, int(runs.size())});
        }
    }
    return runs.size() > mostRuns ? std::vector<Run>() : runs;
}

void lookAround(Spot &spot, const QImage &image, const Run &run)
{
    const auto level = [&image](int x, int y) {
        const int row = std::clamp(y, 0, image.height() - 1);
        return levelOf(reinterpret_cast<const QRgb *>(image.constScanLine(row))[std::clamp(x, 0, image.width() - 1)]);
    };
    for (int x = run.left; x <= run.right; ++x) {
        spot.brightest = std::max(spot.brightest, level(x, run.y));
        for (const QPoint &step : {QPoint(-1, 0), QPoint(1, 0), QPoint(0, -1), QPoint(0, 1)}) {
            if (level(x + step.x(), run.y + step.y()) >= brightLevel)
                continue;
            ++spot.around;
            const QPoint behind = QPoint(x, run.y) + outlineReach * step;
            spot.darkAround += level(behind.x(), behind.y()) <= dark ? 1 : 0;
        }
    }
}

} // namespace

std::vector<EdgeShape> brightLettersIn(const QImage &image)
{
    constexpr int faintest = 15; // above nothing, so that white is more than twice as strong as what is hardly bright
    std::vector<Run> runs = brightRunsIn(image);
    connect(runs, 0);
    std::vector<Spot> spots;
    std::vector<int> numbers(runs.size(), -1); // of the spots, by their first runs
    std::vector<int> spotOf;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const Run &run = runs[i];
        int &number = numbers[std::size_t(rootOf(runs, int(i)))];
        if (number < 0) {
            number = int(spots.size());
            spots.emplace_back();
        }
        spotOf.push_back(number);
        Spot &spot = spots[std::size_t(number)];
        spot.ink |= QRect(QPoint(run.left, run.y), QPoint(run.right, run.y));
        spot.pixels += run.right - run.left + 1;
    }
    for (std::size_t i = 0; i < runs.size(); ++i) {
        Spot &spot = spots[std::size_t(spotOf[i])];
        if (spot.isOfLettersSize())
            lookAround(spot, image, runs[i]);
    }
    std::vector<EdgeShape> letters;
    for (const Spot &spot : spots) {
        if (spot.isLetter())
            letters.push_back({spot.ink, spot.around, spot.brightest - brightLevel + faintest, false});
    }
    return letters.size() > most ? std::vector<EdgeShape>() : letters;
}

} // namespace lucentra

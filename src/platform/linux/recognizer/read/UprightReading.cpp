#include "read/UprightReading.h"

#include "read/Writing.h"
#include "strip/StripParts.h"

#include <leptonica/allheaders.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace lucentra {
namespace {

constexpr double inkOfCharacter = 0.93; // ems
constexpr double leastUpright = 60;     // confidence
constexpr double distanceInRow = 1.08;  // ems; of the characters in the row

/// Where to cut between the characters of a column, which have one distance: that with the least ink at the cuts.
std::vector<int> cutsOf(const Strip &column, double em)
{
    constexpr double leastDistance = 0.92; // ems
    constexpr double mostDistance = 1.3;
    constexpr double reach = 0.08;   // ems by which a cut may move to a gap
    constexpr double unlikely = 400; // grey levels, for an em more or less
    const std::vector<std::uint8_t> lightness = darkestOfColumns(column);
    const int width = int(lightness.size());
    const auto cutNear = [&](double place) {
        const int first = std::clamp(int(place - reach * em), 0, width - 1);
        const int last = std::clamp(int(place + reach * em), 0, width - 1);
        int best = std::clamp(int(place), first, last);
        for (int x = first; x <= last; ++x) {
            if (lightness[std::size_t(x)] > lightness[std::size_t(best)])
                best = x;
        }
        return best;
    };
    std::vector<int> best;
    double least = HUGE_VAL;
    for (double distance = leastDistance * em; distance <= mostDistance * em; distance += 0.01 * em) {
        for (double first = 0; first < distance; first += 1) {
            std::vector<int> cuts;
            double ink = 0;
            for (double place = first; place < width + distance; place += distance) {
                cuts.push_back(cutNear(place));
                ink += 255 - lightness[std::size_t(cuts.back())];
            }
            const double cost = ink / double(cuts.size()) + unlikely * std::abs(distance / em - 1);
            if (cost < least) {
                least = cost;
                best = cuts;
            }
        }
    }
    return best;
}

bool isIdeograph(QChar character)
{
    return character.script() == QChar::Script_Han && character != u'々';
}

/// What two readings of the same characters have in common decides which ideograph replaces which.
QString withIdeographs(const QString &vertical, const QString &upright)
{
    const qsizetype columns = upright.size() + 1;
    std::vector<double> cost(std::size_t((vertical.size() + 1) * columns));
    const auto at = [&](qsizetype v, qsizetype u) -> double & { return cost[std::size_t(v * columns + u)]; };
    const auto change = [&](qsizetype v, qsizetype u) {
        constexpr double otherKind = 1.6;
        return vertical[v] == upright[u] ? 0 : isIdeograph(vertical[v]) == isIdeograph(upright[u]) ? 1 : otherKind;
    };
    for (qsizetype v = 0; v <= vertical.size(); ++v) {
        for (qsizetype u = 0; u <= upright.size(); ++u) {
            double least = v == 0 && u == 0 ? 0 : HUGE_VAL;
            if (v > 0)
                least = std::min(least, at(v - 1, u) + 1);
            if (u > 0)
                least = std::min(least, at(v, u - 1) + 1);
            if (v > 0 && u > 0)
                least = std::min(least, at(v - 1, u - 1) + change(v - 1, u - 1));
            at(v, u) = least;
        }
    }
    QString text;
    for (qsizetype v = vertical.size(), u = upright.size(); v > 0 || u > 0;) {
        if (v > 0 && u > 0 && at(v, u) == at(v - 1, u - 1) + change(v - 1, u - 1)) {
            const bool isKnown = isIdeograph(vertical[v - 1]) && isIdeograph(upright[u - 1]);
            text.prepend(isKnown ? upright[u - 1] : vertical[v - 1]);
            --v;
            --u;
        } else if (v > 0 && at(v, u) == at(v - 1, u) + 1) {
            --v;
            if (!isIdeograph(vertical[v]) && vertical[v].unicode() >= 0x80)
                text.prepend(vertical[v]);
        } else {
            --u;
            if (isIdeograph(upright[u]))
                text.prepend(upright[u]);
        }
    }
    return text;
}

} // namespace

Strip uprightStrip(const LineNormalizer &column, Separation separation, const StripShape &shape)
{
    StripShape turned = shape;
    turned.inkShare *= shape.widthScale;
    turned.widthScale = 1 / shape.widthScale;
    const Strip strip = column.strip(separation, turned);
    const std::vector<int> cuts = cutsOf(strip, shape.height * shape.inkShare / inkOfCharacter);
    const int em = int(std::lround(shape.height * turned.inkShare / inkOfCharacter));
    const int step = int(std::lround(distanceInRow * em));
    Strip row(pixCreate(2 * shape.padding + int(cuts.size()) * step, shape.height, 8));
    pixSetAll(row.get());
    int x = shape.padding;
    for (std::size_t i = 1; i < cuts.size(); ++i) {
        const Strip across(pieceOf(strip.get(), cuts[i - 1], cuts[i]));
        const Strip upright(pixRotate90(across.get(), 1));
        const int height = pixGetHeight(upright.get());
        const int margin = (pixGetWidth(upright.get()) - step) / 2;
        pixRasterop(row.get(), x, (shape.height - height) / 2, step, height, PIX_SRC, upright.get(), margin, 0);
        x += step;
    }
    return row;
}

Reading withUprightIdeographs(const Reading &vertical, const LineNormalizer &column, Separation separation,
                              ReadingLanguage horizontal, const PassReader &reader)
{
    const int ideographs = scriptsOf(vertical.text).han;
    if (ideographs == 0 || !LineReader::isInstalled(horizontal))
        return vertical;
    const Strip strip = uprightStrip(column, separation, LineReader::stripShape(horizontal));
    const Reading upright = reader.read(strip, horizontal);
    QString text = upright.text;
    text.remove(u' ');
    const int known = scriptsOf(text).han;
    if (upright.confidence < leastUpright || 5 * std::abs(known - ideographs) > std::max(5, ideographs))
        return vertical;
    Reading reading = vertical;
    reading.text = withIdeographs(vertical.text, text);
    reading.confidence = std::max(vertical.confidence, upright.confidence);
    return reading;
}

} // namespace lucentra

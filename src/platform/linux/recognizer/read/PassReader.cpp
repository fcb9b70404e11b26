#include "read/PassReader.h"

#include <leptonica/allheaders.h>

#include <algorithm>
#include <vector>

namespace lucentra {
namespace {

constexpr int longest = 40;      // heights of the strip
constexpr double wordGap = 0.13; // of the strip's height; narrower ones are between ideographs or letters
constexpr l_uint8 paper = 0xC0;  // grey, 0 to 255; nothing darker is in an empty column

/// A place to cut a strip at, between two columns.
struct Cut
{
    int x = 0;
    int gap = 0; // empty columns around it
};

/// The middle of the widest gap from `from` to `to`, or the lightest column if there is no gap.
Cut bestCut(const std::vector<std::uint8_t> &darkest, int from, int to)
{
    Cut best;
    int run = 0;
    for (int x = from; x <= to; ++x) {
        run = x < to && darkest[std::size_t(x)] >= lightestInk ? run + 1 : 0;
        if (run > 0 && run >= best.gap)
            best = {x - run / 2, run};
    }
    if (best.gap == 0) {
        const auto lightest = std::max_element(darkest.begin() + from, darkest.begin() + to);
        best.x = int(lightest - darkest.begin());
    }
    return best;
}

/// The columns from `left` to before `right`, with paper beside them.
Strip pieceOf(Pix *strip, int left, int right)
{
    const int padding = StripShape().padding;
    Strip piece(pixCreate(right - left + 2 * padding, pixGetHeight(strip), 8));
    pixSetAll(piece.get());
    pixRasterop(piece.get(), padding, 0, right - left, pixGetHeight(strip), PIX_SRC, strip, left, 0);
    return piece;
}

} // namespace

Reading PassReader::read(const Strip &strip, ReadingLanguage language, ReadingMode mode, int most) const
{
    if (!strip || !isWanted())
        return {};
    const int width = pixGetWidth(strip.get());
    const int piece = longest * pixGetHeight(strip.get());
    if (width <= piece)
        return m_reader.read(strip, language, mode, most);
    const std::vector<std::uint8_t> darkest = darkestOfColumns(strip);
    Reading whole{{}, 0, language};
    double sum = 0;
    qsizetype length = 0;
    for (int left = 0; left < width;) {
        const bool isLast = width - left <= piece;
        const Cut cut = isLast ? Cut{width, 0} : bestCut(darkest, left + piece / 2, left + piece);
        if (!isWanted())
            return {};
        const Reading part = m_reader.read(pieceOf(strip.get(), left, cut.x), language, mode, most);
        whole.text += part.text;
        if (!isLast && cut.gap >= wordGap * pixGetHeight(strip.get()))
            whole.text += QLatin1Char(' ');
        if (!part.text.isEmpty())
            whole.weakest = length == 0 ? part.weakest : std::min(whole.weakest, part.weakest);
        sum += part.confidence * double(part.text.size());
        length += part.text.size();
        left = cut.x;
    }
    whole.text = whole.text.simplified();
    if (length > 0)
        whole.confidence = sum / double(length);
    return whole;
}

} // namespace lucentra

#include "strip/StripParts.h"

#include <leptonica/allheaders.h>

#include <algorithm>

namespace lucentra {

std::vector<std::uint8_t> darkestOfColumns(const Strip &strip)
{
    std::vector<std::uint8_t> darkest(std::size_t(pixGetWidth(strip.get())), 255);
    for (int y = 0; y < pixGetHeight(strip.get()); ++y) {
        const l_uint32 *row = pixGetData(strip.get()) + std::ptrdiff_t(y) * pixGetWpl(strip.get());
        for (std::size_t x = 0; x < darkest.size(); ++x)
            darkest[x] = std::min(darkest[x], std::uint8_t(GET_DATA_BYTE(row, x)));
    }
    return darkest;
}

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

Strip pieceOf(Pix *strip, int left, int right)
{
    const int padding = StripShape().padding;
    Strip piece(pixCreate(right - left + 2 * padding, pixGetHeight(strip), 8));
    pixSetAll(piece.get());
    pixRasterop(piece.get(), padding, 0, right - left, pixGetHeight(strip), PIX_SRC, strip, left, 0);
    return piece;
}

} // namespace lucentra

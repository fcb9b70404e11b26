#include "strip/StripParts.h"

#include <leptonica/allheaders.h>

#include <algorithm>

namespace lucentra {

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

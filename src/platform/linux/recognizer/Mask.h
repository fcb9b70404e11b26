#pragma once

#include "strip/LineNormalizer.h"

#include <leptonica/allheaders.h>

namespace lucentra {

/// A picture with one bit per pixel, set where `isSet(x, y)`.
template <typename Predicate> Strip maskOf(int width, int height, const Predicate &isSet)
{
    Strip mask(pixCreate(width, height, 1));
    for (int y = 0; y < height; ++y) {
        l_uint32 *bits = pixGetData(mask.get()) + std::ptrdiff_t(y) * pixGetWpl(mask.get());
        for (int x = 0; x < width; ++x) {
            if (isSet(x, y))
                SET_DATA_BIT(bits, x);
        }
    }
    return mask;
}

} // namespace lucentra

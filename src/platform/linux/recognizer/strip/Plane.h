#pragma once

#include "strip/LineNormalizer.h"

#include <QPointF>

#include <vector>

namespace lucentra {

/// A plane of numbers, row by row.
struct Plane
{
    int width;
    int height;
    std::vector<float> values;

    Plane(int w, int h)
        : width(w)
        , height(h)
        , values(std::size_t(w) * std::size_t(h))
    {
    }
    float *row(int y) { return values.data() + std::ptrdiff_t(y) * width; }
    const float *row(int y) const { return values.data() + std::ptrdiff_t(y) * width; }
};

/// The plane scaled by `scale.x()` and `scale.y()`.
Plane resized(const Plane &source, const QPointF &scale);

/// Dark where the coverage is high; it is from 0 to 1.
Strip greyOf(const Plane &coverage);

/// Clears the plane where the mask has no bit. The mask has its size, with one bit per pixel.
void keepOnly(const Strip &mask, Plane &coverage);

} // namespace lucentra

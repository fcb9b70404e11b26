#pragma once

#include <QImage>

#include <algorithm>
#include <utility>

namespace lucentra {

/// The smallest rectangle around the pixels that a test looks for. The picture has 32 bits per pixel.
template <typename Predicate>
QRect boundsOf(const QImage &picture, Predicate isWanted)
{
    QRect bounds;
    for (int y = 0; y < picture.height(); ++y) {
        const auto *const line = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            if (isWanted(line[x]))
                bounds |= QRect(x, y, 1, 1);
        }
    }
    return bounds;
}

/// The greys of an area, from the least to the greatest.
inline std::pair<int, int> greys(const QImage &picture, const QRect &area)
{
    int least = 255, greatest = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            least = std::min(least, qGray(picture.pixel(x, y)));
            greatest = std::max(greatest, qGray(picture.pixel(x, y)));
        }
    }
    return {least, greatest};
}

} // namespace lucentra

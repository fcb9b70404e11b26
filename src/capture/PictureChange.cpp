#include "PictureChange.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>

namespace lucentra {

namespace {

/// The greatest difference of a colour channel that counts as none: dither, and what video encoders add.
constexpr int noise = 10;
/// The difference of brightness between neighbours that makes an edge.
constexpr int edgeContrast = 56;
/// The fewest edges of a tile with writing in it. The outline of a shape that crosses the tile has one a row.
constexpr int leastEdges = 44;
/// The share of the edges of both pictures that differ if the writing is another one.
constexpr double otherShare = 0.35;
/// The share of a line's pixels that differ if what is behind it moves.
constexpr double movingShare = 0.25;
constexpr double sharedPlace = 0.5;

bool differs(QRgb a, QRgb b)
{
    return std::abs(qRed(a) - qRed(b)) > noise || std::abs(qGreen(a) - qGreen(b)) > noise ||
           std::abs(qBlue(a) - qBlue(b)) > noise;
}

const QRgb *row(const QImage &picture, int y)
{
    return reinterpret_cast<const QRgb *>(picture.constScanLine(y));
}

int differingPixels(const QImage &before, const QImage &now, const QRect &rect)
{
    int count = 0;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        const QRgb *a = row(before, y);
        const QRgb *b = row(now, y);
        for (int x = rect.left(); x <= rect.right(); ++x)
            count += differs(a[x], b[x]);
    }
    return count;
}

int brightness(QRgb color)
{
    return (qRed(color) + 2 * qGreen(color) + qBlue(color)) / 4;
}

} // namespace

bool isSamePicture(const QImage &before, const QImage &now, const QRect &rect)
{
    if (before.size() != now.size())
        return false;
    const QRect shared = rect & now.rect();
    for (int y = shared.top(); y <= shared.bottom(); ++y) {
        const QRgb *a = row(before, y) + shared.left();
        const QRgb *b = row(now, y) + shared.left();
        if (std::memcmp(a, b, size_t(shared.width()) * sizeof(QRgb)) != 0 &&
            !std::equal(a, a + shared.width(), b, [](QRgb x, QRgb z) { return !differs(x, z); }))
            return false;
    }
    return true;
}

QRegion changedTiles(const QImage &before, const QImage &now, const QRect &within)
{
    QRegion changed;
    const QRect whole = now.rect();
    const QRect looked = within & whole;
    for (int y = looked.top() / tileSide * tileSide; y <= looked.bottom(); y += tileSide) {
        for (int x = looked.left() / tileSide * tileSide; x <= looked.right(); x += tileSide) {
            const QRect tile = QRect(x, y, tileSide, tileSide) & whole;
            if (!isSamePicture(before, now, tile))
                changed |= tile;
        }
    }
    return changed;
}

TileEdges edgesOfTile(const QImage &picture, const QRect &tile)
{
    TileEdges edges{};
    const QRect inside = tile & picture.rect();
    const int columns = std::min(inside.width(), picture.width() - 1 - inside.left()); // the last one has no neighbour
    for (int y = 0; y < inside.height(); ++y) {
        const QRgb *pixels = row(picture, inside.top() + y) + inside.left();
        quint32 bits = 0;
        for (int x = 0; x < columns; ++x)
            bits |= quint32(std::abs(brightness(pixels[x + 1]) - brightness(pixels[x])) > edgeContrast) << x;
        edges[size_t(y)] = bits;
    }
    return edges;
}

bool isOtherWriting(const TileEdges &before, const TileEdges &now)
{
    int former = 0;
    int current = 0;
    int either = 0;
    int different = 0;
    for (size_t y = 0; y < before.size(); ++y) {
        former += std::popcount(before[y]);
        current += std::popcount(now[y]);
        either += std::popcount(before[y] | now[y]);
        different += std::popcount(before[y] ^ now[y]);
    }
    return std::max(former, current) >= leastEdges && different > otherShare * either;
}

bool isSamePlace(const QRectF &a, const QRectF &b)
{
    const auto area = [](const QRectF &rect) { return rect.width() * rect.height(); };
    return area(a & b) > sharedPlace * std::min(area(a), area(b));
}

bool isSameWriting(const QImage &before, const QImage &now, const QRect &rect)
{
    if (before.size() != now.size())
        return false;
    const QRect shared = rect & now.rect();
    if (differingPixels(before, now, shared) < movingShare * shared.width() * shared.height())
        return false;
    bool hasWriting = false;
    // In parts, so that one other letter in a long line counts.
    for (int y = shared.top(); y <= shared.bottom(); y += tileSide) {
        for (int x = shared.left(); x <= shared.right(); x += tileSide) {
            const QRect part = QRect(x, y, tileSide, tileSide) & shared;
            const TileEdges a = edgesOfTile(before, part);
            const TileEdges b = edgesOfTile(now, part);
            if (isOtherWriting(a, b))
                return false;
            hasWriting = hasWriting || isOtherWriting(a, {});
        }
    }
    return hasWriting;
}

} // namespace lucentra

#include "PictureChange.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <numeric>
#include <utility>

namespace lucentra {

namespace {

/// The greatest difference of a colour channel that counts as none: dither, and what video encoders add.
constexpr int noise = 10;
/// The difference of brightness between neighbours that makes an edge.
constexpr int edgeContrast = 56;
/// The same for edges that are strong on any ground, and for the faintest writing; more than noise.
constexpr int strongestContrast = 112;
constexpr int faintContrast = 16;
/// Letters are compared by their strongest edges, of which there must be this many. Of the same letters, at most this
/// share of them differs, or this number.
constexpr int leastStrongest = 12;
constexpr double sameShare = 0.05;
constexpr int sameCount = 4;
/// The width of the outline that letters have over pictures. It has edges where the picture behind it is bright.
constexpr int outline = 3;
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

/// Red and blue differ, so that writing of the one on the other has edges.
int brightness(QRgb color)
{
    return (3 * qRed(color) + 4 * qGreen(color) + qBlue(color)) / 8;
}

TileEdges edgesOf(const QImage &picture, const QRect &tile, int contrast)
{
    TileEdges edges{};
    const QRect inside = tile & picture.rect();
    const int columns = std::min(inside.width(), picture.width() - 1 - inside.left()); // the last one has no neighbour
    for (int y = 0; y < inside.height(); ++y) {
        const QRgb *pixels = row(picture, inside.top() + y) + inside.left();
        quint32 bits = 0;
        int next = columns > 0 ? brightness(pixels[0]) : 0;
        for (int x = 0; x < columns; ++x) {
            const int current = std::exchange(next, brightness(pixels[x + 1]));
            bits |= quint32(std::abs(next - current) > contrast) << x;
        }
        edges[size_t(y)] = bits;
    }
    return edges;
}

/// The edges and what is up to so many pixels around them.
TileEdges grown(const TileEdges &edges, int margin)
{
    TileEdges wide = edges;
    for (quint32 &row : wide) {
        for (int i = 0; i < margin; ++i)
            row |= row << 1 | row >> 1;
    }
    TileEdges result = wide;
    for (int y = 0; y < tileSide; ++y) {
        for (int i = std::max(0, y - margin); i <= std::min(tileSide - 1, y + margin); ++i)
            result[size_t(y)] |= wide[size_t(i)];
    }
    return result;
}

int countOf(const TileEdges &edges)
{
    return std::accumulate(edges.begin(), edges.end(), 0,
                           [](int sum, quint32 bits) { return sum + std::popcount(bits); });
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

bool areSameShapes(const QImage &before, const QImage &now, const QRect &tile)
{
    std::array<int, tileSide> differences{};
    const size_t width = size_t(tile.width());
    for (int y = tile.top(); y <= tile.bottom(); y += 2) { // no letter is lower than two rows
        const QRgb *a = row(before, y) + tile.left();
        const QRgb *b = row(now, y) + tile.left();
        if (std::memcmp(a, b, width * sizeof(QRgb)) == 0)
            continue;
        // Without branches, so that the compiler makes vector code of it.
        for (size_t x = 0; x < width; ++x)
            differences[x] = brightness(b[x]) - brightness(a[x]);
        int steepest = 0;
        for (size_t x = 1; x < width; ++x)
            steepest = std::max(steepest, std::abs(differences[x] - differences[x - 1]));
        if (steepest > faintContrast)
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
    return edgesOf(picture, tile, edgeContrast);
}

TileEdges commonEdges(const TileEdges &a, const TileEdges &b)
{
    TileEdges common{};
    std::transform(a.begin(), a.end(), b.begin(), common.begin(), std::bit_and<>());
    return common;
}

bool hasWriting(const TileEdges &edges)
{
    return countOf(edges) >= leastEdges;
}

TileWriting writingOfTile(const QImage &picture, const QRect &tile)
{
    return {edgesOf(picture, tile, edgeContrast), edgesOf(picture, tile, strongestContrast)};
}

Letters lettersInTile(const TileWriting &before, const QImage &picture, const QRect &tile)
{
    const int strongest = countOf(before.strongest);
    const TileEdges now = edgesOf(picture, tile, edgeContrast);
    const int missing = strongest - countOf(commonEdges(before.strongest, now));
    const int additional = countOf(now) - countOf(commonEdges(now, grown(before.edges, outline)));
    const double few = std::max<double>(sameCount, sameShare * strongest);
    if (strongest >= leastStrongest && missing + additional <= few)
        return Letters::Same;
    return missing <= few && additional < leastEdges ? Letters::Joined : Letters::Other;
}

bool mayHoldWriting(const QImage &picture, const QRect &tile)
{
    return hasWriting(edgesOf(picture, tile, faintContrast));
}

bool isOtherWriting(const TileEdges &before, const TileEdges &now)
{
    const int former = countOf(before);
    const int current = countOf(now);
    const int common = countOf(commonEdges(before, now));
    const int either = former + current - common;
    return std::max(former, current) >= leastEdges && either - common > otherShare * either;
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
    bool isWritten = false;
    // In parts, so that one other letter in a long line counts.
    for (int y = shared.top(); y <= shared.bottom(); y += tileSide) {
        for (int x = shared.left(); x <= shared.right(); x += tileSide) {
            const QRect part = QRect(x, y, tileSide, tileSide) & shared;
            const TileEdges a = edgesOfTile(before, part);
            const TileEdges b = edgesOfTile(now, part);
            if (isOtherWriting(a, b))
                return false;
            isWritten = isWritten || hasWriting(a);
        }
    }
    return isWritten;
}

} // namespace lucentra

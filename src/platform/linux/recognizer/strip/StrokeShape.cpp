#include "strip/StrokeShape.h"

#include "strip/StripParts.h"

#include <leptonica/allheaders.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace lucentra {
namespace {

/// A character between two empty columns. Pixels of the strip; the last column and row are those behind it.
struct Glyph
{
    int left = 0;
    int right = 0;
    int top = 0;
    int bottom = 0;

    int width() const { return right - left; }
    int height() const { return bottom - top; }
};

/// What of a glyph's rows is ink, on the average of some of them. Pixels of the strip.
struct RowInk
{
    double width = 0;
    double middle = 0; // from the glyph's left
};

RowInk inkOf(Pix *strip, const Glyph &glyph, int top, int bottom)
{
    double sum = 0;
    double moment = 0;
    for (int y = top; y < bottom; ++y) {
        const l_uint32 *row = pixGetData(strip) + std::ptrdiff_t(y) * pixGetWpl(strip);
        for (int x = glyph.left; x < glyph.right; ++x) {
            const double dark = 1 - GET_DATA_BYTE(row, x) / 255.0;
            sum += dark;
            moment += dark * (x - glyph.left);
        }
    }
    return sum > 0 ? RowInk{sum / (bottom - top), moment / sum} : RowInk{};
}

Glyph glyphNear(const Strip &strip, int column)
{
    constexpr double least = 0.8; // pixels of ink in a row
    const std::vector<std::uint8_t> darkest = darkestOfColumns(strip);
    const auto isInk = [&](int x) {
        return x >= 0 && x < int(darkest.size()) && darkest[std::size_t(x)] < lightestInk;
    };
    const int height = pixGetHeight(strip.get());
    int away = 0;
    while (away < height / 5 && !isInk(column - away) && !isInk(column + away))
        ++away;
    Glyph glyph;
    glyph.left = isInk(column + away) ? column + away : column - away;
    glyph.right = glyph.left;
    while (isInk(glyph.left - 1))
        --glyph.left;
    while (isInk(glyph.right))
        ++glyph.right;
    const auto isEmptyRow = [&](int y) { return inkOf(strip.get(), glyph, y, y + 1).width < least; };
    glyph.bottom = height;
    while (glyph.top < height && isEmptyRow(glyph.top))
        ++glyph.top;
    while (glyph.bottom > glyph.top && isEmptyRow(glyph.bottom - 1))
        --glyph.bottom;
    return glyph;
}

} // namespace

StrokeShape strokeShapeAt(const Strip &strip, int left, int right)
{
    constexpr int parts = 6;
    constexpr double leastHeight = 0.44; // of the strip's
    const Glyph glyph = glyphNear(strip, (left + right) / 2);
    const double height = glyph.height();
    if (height < leastHeight * pixGetHeight(strip.get()))
        return StrokeShape::Other;
    std::array<RowInk, parts> ink; // from top to bottom
    for (int i = 0; i < parts; ++i)
        ink[std::size_t(i)] = inkOf(strip.get(), glyph, glyph.top + glyph.height() * i / parts,
                                    glyph.top + glyph.height() * (i + 1) / parts);
    const auto [narrow, wide] = std::ranges::minmax(ink, {}, &RowInk::width);
    const auto [first, last] = std::ranges::minmax(ink, {}, &RowInk::middle);
    if (glyph.width() <= 0.25 * height && wide.width < 1.25 * narrow.width &&
        last.middle - first.middle < 0.01 * height + 0.1)
        return StrokeShape::Bar;
    const double stem = (ink[2].width + ink[3].width) / 2;
    const double middle = (ink[2].middle + ink[3].middle) / 2;
    const bool isUpright = std::abs(ink[2].middle - ink[3].middle) < 0.05 * height;
    const bool hasFlag = ink[0].width >= 1.4 * stem && ink[0].middle <= middle - 0.03 * height &&
                         ink[1].width >= 1.03 * stem && ink[1].middle <= middle - 0.015 * height;
    const bool hasEvenFoot = std::abs(ink[5].middle - middle) < 0.05 * height;
    if (glyph.width() <= 0.75 * height && isUpright && hasFlag && hasEvenFoot)
        return StrokeShape::One;
    return StrokeShape::Other;
}

int underscoresAt(const Strip &strip, int left, int right)
{
    constexpr double usual = 0.38; // of the strip's height; the width of one
    constexpr double mostHeight = 0.2;
    const Glyph glyph = glyphNear(strip, (left + right) / 2);
    const double height = pixGetHeight(strip.get());
    return glyph.height() > mostHeight * height ? 1 : std::max(1, int(std::lround(glyph.width() / (usual * height))));
}

} // namespace lucentra

#include "LineRows.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace lucentra {
namespace {

constexpr int lowestRow = 8; // pixels; halves of small letters may be that low, rows of writing hardly

/// How many letters stand side by side; where they run together by how wide that is.
int lettersIn(std::vector<EdgeShape> shapes, int height)
{
    std::ranges::sort(shapes, {}, [](const EdgeShape &shape) { return shape.ink.left(); });
    int count = 0;
    QRect letter;
    const auto end = [&] { count += letter.isNull() ? 0 : std::max(1, letter.width() / height); };
    for (const EdgeShape &shape : shapes) {
        if (!letter.isNull() && shape.ink.left() > letter.right()) {
            end();
            letter = QRect();
        }
        letter |= shape.ink;
    }
    end();
    return count;
}

/// Neither a letter or two nor a row of accents.
bool isRow(const std::vector<EdgeShape> &shapes, int groupHeight)
{
    const int height = inkOf(shapes).height();
    return height >= lowestRow && 5 * height >= groupHeight && lettersIn(shapes, height) >= 3;
}

/// Empty rows between two rows of writing.
struct Band
{
    int middle; // a row of the image
    int height;
};

/// The highest band, neither near the top nor near the bottom, that no shape touches.
std::optional<Band> emptyBand(const std::vector<EdgeShape> &shapes, const QRect &ink)
{
    std::vector<bool> isCovered(std::size_t(ink.height()) + 1, false);
    isCovered.back() = true; // ends the last band
    for (const EdgeShape &shape : shapes) {
        const auto first = isCovered.begin() + (shape.ink.top() - ink.top());
        std::fill(first, first + shape.ink.height(), true);
    }
    std::optional<Band> highest;
    int start = 0;
    for (int y = 0; y <= ink.height(); ++y) {
        if (!isCovered[std::size_t(y)])
            continue;
        const int height = y - start;
        const int twiceMiddle = start + y - 1;
        if (height > (highest ? highest->height : 0) && 2 * twiceMiddle >= ink.height() &&
            2 * twiceMiddle <= 3 * ink.height())
            highest = Band{ink.top() + twiceMiddle / 2, height};
        start = y + 1;
    }
    return highest;
}

} // namespace

std::vector<EdgeShape> withoutSpecks(std::vector<EdgeShape> shapes)
{
    int tallest = 0;
    for (const EdgeShape &shape : shapes)
        tallest = std::max(tallest, shape.ink.height());
    const auto isSpeck = [most = std::max(3, tallest / 5)](const EdgeShape &shape) {
        return std::max(shape.ink.width(), shape.ink.height()) <= most;
    };
    QRect letters;
    for (const EdgeShape &shape : shapes)
        letters = isSpeck(shape) ? letters : letters | shape.ink;
    if (letters.isEmpty())
        return shapes;
    const int accent = tallest * 3 / 10;
    const int punctuation = tallest * 7 / 10;
    std::erase_if(shapes, [&](const EdgeShape &shape) {
        return isSpeck(shape) &&
               (letters.top() - shape.ink.bottom() > accent + 1 || shape.ink.top() - letters.bottom() > accent + 1);
    });
    std::sort(shapes.begin(), shapes.end(),
              [](const EdgeShape &a, const EdgeShape &b) { return a.ink.left() < b.ink.left(); });
    const auto last = std::find_if_not(shapes.rbegin(), shapes.rend(), isSpeck).base();
    auto end = last;
    for (int right = letters.right(); end != shapes.end() && end->ink.left() - right <= punctuation + 1; ++end)
        right = std::max(right, end->ink.right());
    shapes.erase(end, shapes.end());
    auto start = std::find_if_not(shapes.begin(), shapes.end(), isSpeck);
    for (int left = letters.left(); start != shapes.begin() && left - std::prev(start)->ink.right() <= punctuation + 1;
         --start)
        left = std::min(left, std::prev(start)->ink.left());
    shapes.erase(shapes.begin(), start);
    return shapes;
}

std::vector<std::vector<EdgeShape>> rowsOf(std::vector<EdgeShape> shapes)
{
    const QRect ink = inkOf(shapes);
    std::vector<EdgeShape> letters;
    std::ranges::copy_if(shapes, std::back_inserter(letters),
                         [&](const EdgeShape &shape) { return 5 * shape.ink.height() <= 3 * ink.height(); });
    const std::optional<Band> band = emptyBand(letters, ink);
    // Between the parts of a syllable, of an ideograph, there is less room than between rows.
    if (!band || 100 * band->height < 12 * ink.height())
        return {std::move(shapes)};
    // A letter may be a little taller than the others; one that spans the band means that this is one row.
    const int near = ink.height() / 4; // an icon stands farther off
    const QRect among = inkOf(letters).adjusted(-near, 0, near, 0);
    std::vector<EdgeShape> upper;
    std::vector<EdgeShape> lower;
    for (const EdgeShape &shape : shapes) {
        const int above = std::clamp(band->middle - shape.ink.top(), 0, shape.ink.height());
        if (10 * above >= 7 * shape.ink.height())
            upper.push_back(shape);
        else if (10 * above <= 3 * shape.ink.height())
            lower.push_back(shape);
        else if (shape.ink.left() < among.right() && shape.ink.right() > among.left())
            return {std::move(shapes)};
    }
    if (!isRow(upper, ink.height()) || !isRow(lower, ink.height()))
        return {std::move(shapes)};
    std::vector<std::vector<EdgeShape>> rows = rowsOf(std::move(upper));
    std::ranges::move(rowsOf(std::move(lower)), std::back_inserter(rows));
    return rows;
}

} // namespace lucentra

#include "LineRows.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace lucentra {
namespace {

constexpr int lowestRow = 8; // pixels; halves of small letters may be that low, rows of writing hardly

int widthsOf(const std::vector<EdgeShape> &shapes)
{
    int width = 0;
    for (const EdgeShape &shape : shapes)
        width += shape.ink.width();
    return width;
}

/// Neither a single letter nor a row of accents.
bool isRow(const std::vector<EdgeShape> &shapes, int groupHeight)
{
    const int height = inkOf(shapes).height();
    return height >= lowestRow && 5 * height >= groupHeight && 2 * widthsOf(shapes) >= 3 * height;
}

/// The middle of the widest band, neither near the top nor near the bottom, that no shape touches.
std::optional<int> emptyRow(const std::vector<EdgeShape> &shapes, const QRect &ink)
{
    std::vector<bool> isCovered(std::size_t(ink.height()) + 1, false);
    isCovered.back() = true; // ends the last band
    for (const EdgeShape &shape : shapes) {
        const auto first = isCovered.begin() + (shape.ink.top() - ink.top());
        std::fill(first, first + shape.ink.height(), true);
    }
    std::optional<int> middle;
    int widest = 0;
    int start = 0;
    for (int y = 0; y <= ink.height(); ++y) {
        if (!isCovered[std::size_t(y)])
            continue;
        const int width = y - start;
        const int twiceMiddle = start + y - 1;
        if (width > widest && 2 * twiceMiddle >= ink.height() && 2 * twiceMiddle <= 3 * ink.height()) {
            widest = width;
            middle = ink.top() + twiceMiddle / 2;
        }
        start = y + 1;
    }
    return middle;
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
        right = end->ink.right();
    shapes.erase(end, shapes.end());
    auto start = std::find_if_not(shapes.begin(), shapes.end(), isSpeck);
    for (int left = letters.left(); start != shapes.begin() && left - std::prev(start)->ink.right() <= punctuation + 1;
         --start)
        left = std::prev(start)->ink.left();
    shapes.erase(shapes.begin(), start);
    return shapes;
}

std::vector<std::vector<EdgeShape>> rowsOf(std::vector<EdgeShape> shapes)
{
    const QRect ink = inkOf(shapes);
    std::vector<EdgeShape> letters;
    std::ranges::copy_if(shapes, std::back_inserter(letters),
                         [&](const EdgeShape &shape) { return 5 * shape.ink.height() <= 3 * ink.height(); });
    const std::optional<int> cut = emptyRow(letters, ink);
    if (!cut)
        return {std::move(shapes)};
    // A letter may be a little taller than the others; one that spans the band means that this is one row.
    const QRect lettersInk = inkOf(letters);
    std::vector<EdgeShape> upper;
    std::vector<EdgeShape> lower;
    for (const EdgeShape &shape : shapes) {
        const int above = std::clamp(*cut - shape.ink.top(), 0, shape.ink.height());
        if (10 * above >= 7 * shape.ink.height())
            upper.push_back(shape);
        else if (10 * above <= 3 * shape.ink.height())
            lower.push_back(shape);
        else if (shape.ink.left() < lettersInk.right() && shape.ink.right() > lettersInk.left())
            return {std::move(shapes)};
    }
    if (!isRow(upper, ink.height()) || !isRow(lower, ink.height()))
        return {std::move(shapes)};
    std::vector<std::vector<EdgeShape>> rows = rowsOf(std::move(upper));
    std::ranges::move(rowsOf(std::move(lower)), std::back_inserter(rows));
    return rows;
}

} // namespace lucentra

#include "LineEntries.h"

#include <algorithm>

namespace lucentra {
namespace {

/// Shapes above or within one another: a letter.
struct Letter
{
    QRect ink;
    std::size_t end; // of its shapes
};

std::vector<Letter> lettersOf(const std::vector<EdgeShape> &shapes)
{
    std::vector<Letter> letters;
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        const QRect &ink = shapes[i].ink;
        if (!letters.empty() && ink.left() <= letters.back().ink.right() + 1)
            letters.back() = {letters.back().ink | ink, i + 1};
        else
            letters.push_back({ink, i + 1});
    }
    return letters;
}

int gapAfter(const std::vector<Letter> &letters, std::size_t index)
{
    return letters[index + 1].ink.left() - letters[index].ink.right() - 1;
}

/// From a letter's middle to the next one's, doubled.
int stepAfter(const std::vector<Letter> &letters, std::size_t index)
{
    const QRect &a = letters[index].ink;
    const QRect &b = letters[index + 1].ink;
    return b.left() + b.right() - a.left() - a.right();
}

/// What leaves room beside it: a comma, a full stop, among ideographs a colon or a bracket too.
bool isMark(const QRect &ink, int height, bool areSquare)
{
    const bool isNarrow = 100 * ink.width() < 45 * height;
    return isNarrow && (areSquare || 100 * ink.height() < 45 * height);
}

} // namespace

std::vector<std::vector<EdgeShape>> entriesOf(std::vector<EdgeShape> shapes)
{
    std::sort(shapes.begin(), shapes.end(),
              [](const EdgeShape &a, const EdgeShape &b) { return a.ink.left() < b.ink.left(); });
    const std::vector<Letter> letters = lettersOf(shapes);
    if (letters.size() < 4)
        return {std::move(shapes)};
    QRect line;
    std::vector<int> steps;
    std::vector<int> widths;
    for (std::size_t i = 0; i < letters.size(); ++i) {
        line |= letters[i].ink;
        widths.push_back(letters[i].ink.width());
        if (i + 1 < letters.size())
            steps.push_back(stepAfter(letters, i));
    }
    const auto median = [](std::vector<int> &values) {
        const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
        std::nth_element(values.begin(), middle, values.end());
        return *middle;
    };
    const int height = line.height();
    const int step = median(steps);
    const bool areSquare = 100 * median(widths) >= 70 * height;
    // Between letters of one width a space makes the step twice as long.
    const auto isWide = [&](std::size_t i) {
        return 100 * gapAfter(letters, i) >= 78 * height && (areSquare || 10 * stepAfter(letters, i) >= 24 * step);
    };
    int widestSpace = 0;
    for (std::size_t i = 0; i + 1 < letters.size(); ++i)
        widestSpace = isWide(i) ? widestSpace : std::max(widestSpace, gapAfter(letters, i));

    std::vector<std::size_t> ends; // of entries, in shapes
    std::size_t first = 0;
    for (std::size_t i = 1; i + 2 < letters.size(); ++i) {
        if (i < first + 1 || !isWide(i) || gapAfter(letters, i) < 2 * widestSpace ||
            isMark(letters[i].ink, height, areSquare) || isMark(letters[i + 1].ink, height, areSquare))
            continue;
        ends.push_back(letters[i].end);
        first = i + 1;
    }
    // A colon that wasn't found leaves a gap among ideographs that is as wide.
    if (ends.empty() || (areSquare && ends.size() < 2))
        return {std::move(shapes)};
    ends.push_back(shapes.size());
    std::vector<std::vector<EdgeShape>> entries;
    std::size_t start = 0;
    for (const std::size_t end : ends) {
        entries.emplace_back(shapes.begin() + std::ptrdiff_t(start), shapes.begin() + std::ptrdiff_t(end));
        start = end;
    }
    return entries;
}

} // namespace lucentra

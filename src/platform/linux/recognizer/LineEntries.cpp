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
        if (!letters.empty() && ink.left() < letters.back().ink.right())
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

/// Whether the steps are those of a typewriter: once, twice, three times the usual one. There spaces are wide.
bool areOfOneWidth(const std::vector<int> &steps, int usual)
{
    const auto regular = std::count_if(steps.begin(), steps.end(), [usual](int step) {
        const int rest = step % usual;
        return 5 * std::min(rest, usual - rest) <= usual;
    });
    return 5 * regular >= 4 * std::ssize(steps);
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
    for (std::size_t i = 0; i < letters.size(); ++i) {
        line |= letters[i].ink;
        if (i + 1 < letters.size())
            steps.push_back(stepAfter(letters, i));
    }
    const auto middle = steps.begin() + std::ptrdiff_t(steps.size() / 2);
    std::nth_element(steps.begin(), middle, steps.end());
    const int step = std::max(1, *middle);
    const int height = line.height();
    // Some ideographs fall apart into two halves, but all are as high as the line, and some as wide.
    const auto count = [&letters](const auto &isSo) { return std::count_if(letters.begin(), letters.end(), isSo); };
    const auto high = count([&](const Letter &letter) { return 5 * letter.ink.height() >= 4 * height; });
    const auto wide = count([&](const Letter &letter) { return 4 * letter.ink.width() >= 3 * height; });
    const bool areSquare = 10 * high >= 6 * std::ssize(letters) && 5 * wide >= std::ssize(letters);
    if (!areSquare && areOfOneWidth(steps, step))
        return {std::move(shapes)};
    const auto isWide = [&](std::size_t i) {
        return 100 * gapAfter(letters, i) >= 78 * height && (areSquare || 10 * stepAfter(letters, i) >= 21 * step);
    };
    int widestSpace = 0;
    for (std::size_t i = 0; i + 1 < letters.size(); ++i)
        widestSpace = isWide(i) ? widestSpace : std::max(widestSpace, gapAfter(letters, i));

    std::vector<std::size_t> ends; // of entries, in shapes
    int left = line.left();
    for (std::size_t i = 0; i + 1 < letters.size(); ++i) {
        const bool isMoreThanLetter =
            letters[i].ink.right() - left > height && line.right() - letters[i + 1].ink.left() > height;
        if (!isMoreThanLetter || !isWide(i) || gapAfter(letters, i) < 2 * widestSpace ||
            isMark(letters[i].ink, height, areSquare) || isMark(letters[i + 1].ink, height, areSquare))
            continue;
        ends.push_back(letters[i].end);
        left = letters[i + 1].ink.left();
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

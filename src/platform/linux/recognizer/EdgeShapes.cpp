#include "EdgeShapes.h"

#include "Runs.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>

namespace lucentra {
namespace {

using Shape = std::vector<Run>;

/// The share of the inner rectangle that the outline covers.
double interiorInk(const Shape &runs, const QRect &ink)
{
    const int inset = std::clamp(std::min(ink.width(), ink.height()) / 4, 2, 12);
    const QRect inner = ink.adjusted(inset, inset, -inset, -inset);
    if (inner.isEmpty())
        return 1;
    int pixels = 0;
    for (const Run &run : runs) {
        if (run.y >= inner.top() && run.y <= inner.bottom())
            pixels += std::max(0, std::min(run.right, inner.right()) - std::max(run.left, inner.left()) + 1);
    }
    return pixels / double(qint64(inner.width()) * inner.height());
}

EdgeShape measure(const EdgeMap &edges, const Shape &runs)
{
    int left = runs.front().left;
    int right = 0;
    int pixels = 0;
    qint64 strength = 0;
    for (const Run &run : runs) {
        left = std::min(left, run.left);
        right = std::max(right, run.right);
        pixels += run.right - run.left + 1;
        strength += std::accumulate(edges.row(run.y) + run.left, edges.row(run.y) + run.right + 1, qint64(0));
    }
    // An edge lies between the pixels before and after it, so the ink begins one pixel after the outermost edge.
    const QRect ink(QPoint(left + 1, runs.front().y + 1),
                    QPoint(std::max(left + 1, right), std::max(runs.front().y + 1, runs.back().y)));
    return {ink, pixels, int(strength / pixels), interiorInk(runs, ink) < 0.05};
}

std::vector<Shape> separate(std::vector<Run> runs)
{
    connect(runs, 1);
    std::vector<int> numbers(runs.size(), -1);
    std::vector<Shape> shapes;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const auto root = std::size_t(rootOf(runs, int(i)));
        if (numbers[root] < 0) {
            numbers[root] = int(shapes.size());
            shapes.emplace_back();
        }
        shapes[std::size_t(numbers[root])].push_back(runs[i]);
    }
    return shapes;
}

bool isOversized(const QRect &ink)
{
    return ink.height() > 60 || ink.width() > 300;
}

/// The left and the right side of a frame, where they are straight.
void addSides(Walls &walls, const Shape &shape, const QRect &ink)
{
    int left = 0;
    int right = 0;
    for (const Run &run : shape) {
        left += run.left <= ink.left() ? 1 : 0;
        right += run.right >= ink.right() - 1 ? 1 : 0;
    }
    if (2 * left >= ink.height())
        walls.add(ink.left(), ink.top(), ink.bottom());
    if (2 * right >= ink.height())
        walls.add(ink.right(), ink.top(), ink.bottom());
}

/// Whether a run is as strong throughout, as a rule is; where the letters of a small font run together it isn't.
bool isEven(const EdgeMap &edges, const Run &run)
{
    const std::uint8_t *const first = edges.row(run.y) + run.left;
    std::vector<std::uint8_t> sorted(first, first + (run.right - run.left + 1));
    const auto middle = sorted.begin() + std::ptrdiff_t(sorted.size() / 2);
    std::nth_element(sorted.begin(), middle, sorted.end());
    const int usual = *middle;
    const auto alike = std::count_if(sorted.begin(), sorted.end(),
                                     [usual](int strength) { return 4 * std::abs(strength - usual) <= usual; });
    return 3 * alike >= 2 * std::ssize(sorted);
}

/// Zeroes the straight lines of a shape: the grid of a table, the track of a slider, an underline. A large letter has
/// long strokes too, but it isn't wide.
void eraseRules(EdgeMap &edges, Walls &walls, const Shape &shape, const QRect &ink)
{
    // Longer than the touching letters of bold type make a stroke together.
    const int ruleLength = ink.height() > 60 ? 150 : std::max(48, 6 * ink.height());
    if (ink.width() < 3 * ink.height() && ink.width() < 150)
        return;
    struct Column
    {
        int pixels = 0;
        int top = 0;
        int bottom = 0;
    };
    std::vector<Column> columns(std::size_t(ink.width()) + 2);
    for (const Run &run : shape) {
        for (int x = run.left; x <= run.right; ++x) {
            Column &column = columns[std::size_t(x) - std::size_t(ink.left()) + 1];
            column.top = column.pixels == 0 ? run.y : column.top;
            column.bottom = run.y;
            ++column.pixels;
        }
    }
    const int columnLimit = std::max(ruleLength, ink.height() / 2);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].pixels >= columnLimit)
            walls.add(ink.left() + int(i) - 1, columns[i].top, columns[i].bottom);
    }
    for (const Run &run : shape) {
        const bool isRule = run.right - run.left >= ruleLength && isEven(edges, run);
        for (int x = run.left; x <= run.right; ++x) {
            if (isRule || columns[std::size_t(x) - std::size_t(ink.left()) + 1].pixels >= columnLimit)
                edges.row(run.y)[x] = 0;
        }
    }
}

void erase(EdgeMap &edges, const Shape &shape)
{
    for (const Run &run : shape)
        std::fill(edges.row(run.y) + run.left, edges.row(run.y) + run.right + 1, std::uint8_t(0));
}

/// Takes a shape over into a map of the same size, or into one that has no size yet.
void copy(const EdgeMap &edges, const Shape &shape, EdgeMap &target)
{
    if (target.width == 0)
        target = {edges.width, edges.height, std::vector<std::uint8_t>(edges.strength.size(), 0), edges.isSmoothed};
    for (const Run &run : shape)
        std::copy(edges.row(run.y) + run.left, edges.row(run.y) + run.right + 1, target.row(run.y) + run.left);
}

/// A border with nearly nothing of its own in it (letters that wide have strokes inside), or a rule.
bool isFrame(const EdgeShape &shape)
{
    const QRect &ink = shape.ink;
    const bool isHorizontalRule = ink.height() <= 4 && ink.width() > 80;
    const bool isVerticalRule = ink.width() <= 4 && ink.height() > 60;
    if (isHorizontalRule || isVerticalRule)
        return true;
    const bool isWide = ink.height() >= 10 && 5 * ink.width() >= 8 * ink.height();
    const bool isLarge = ink.height() >= 60;
    return (isWide || isLarge) && shape.isHollow;
}

/// By row, then column.
std::vector<Run> allRuns(const EdgeMap &edges)
{
    std::vector<Run> runs;
    for (int y = 0; y < edges.height; ++y) {
        const std::uint8_t *row = edges.row(y);
        for (int x = 0; x < edges.width; ++x) {
            if (row[x] == 0)
                continue;
            const int start = x;
            while (x < edges.width && row[x] > 0)
                ++x;
            runs.push_back({y, start, x - 1, int(runs.size())});
        }
    }
    return runs;
}

/// Brings back from the erased frames what is writing: letters whose shadow touches the outline of a hill or a house
/// are one shape with it, and that one is hollow as a whole.
void bringBackLetters(EdgeMap &edges, EdgeMap frames)
{
    constexpr double outline = 0.55; // what is fainter near a letter is no part of it
    constexpr double density = 0.3;  // of the edges in a letter's box; a part of a curve has less
    constexpr int leastHeight = 5;
    dropOvershadowed(frames, outline);
    for (const Shape &shape : separate(allRuns(frames))) {
        const EdgeShape part = measure(frames, shape);
        const bool isDense = part.edgePixels >= density * part.ink.width() * part.ink.height();
        if (isDense && part.ink.height() >= leastHeight && !isFrame(part) && !isOversized(part.ink))
            copy(frames, shape, edges);
    }
}

void eraseFrames(EdgeMap &edges, Walls &walls)
{
    EdgeMap large;
    for (const Shape &shape : separate(allRuns(edges))) {
        const EdgeShape whole = measure(edges, shape);
        if (isFrame(whole)) {
            addSides(walls, shape, whole.ink);
            if (isOversized(whole.ink))
                copy(edges, shape, large);
            erase(edges, shape);
        } else if (whole.ink.width() > 60) {
            eraseRules(edges, walls, shape, whole.ink);
        }
    }
    if (large.width > 0)
        bringBackLetters(edges, std::move(large));
}

/// The shapes that may be letters; `oversized` takes what may be letters that touch a picture.
std::vector<EdgeShape> collected(const EdgeMap &edges, EdgeMap *oversized)
{
    std::vector<EdgeShape> result;
    for (const Shape &shape : separate(allRuns(edges))) {
        const EdgeShape whole = measure(edges, shape);
        if (whole.edgePixels < 3 || isFrame(whole))
            continue;
        if (oversized && isOversized(whole.ink))
            copy(edges, shape, *oversized);
        else
            result.push_back(whole);
    }
    return result;
}

} // namespace

EdgeShapes shapesIn(EdgeMap edges, std::size_t maximum)
{
    constexpr double shadow = 0.25;  // of a letter's strength
    constexpr double picture = 0.45; // is what holds letters and a picture together, at most
    Walls walls;
    eraseFrames(edges, walls);
    dropOvershadowed(edges, shadow);
    EdgeMap oversized;
    std::vector<EdgeShape> shapes = collected(edges, &oversized);
    if (oversized.width > 0) {
        dropOvershadowed(oversized, picture);
        std::ranges::copy(collected(oversized, nullptr), std::back_inserter(shapes));
    }
    if (shapes.size() > maximum) {
        std::nth_element(shapes.begin(), shapes.begin() + std::ptrdiff_t(maximum), shapes.end(),
                         [](const EdgeShape &a, const EdgeShape &b) { return a.strength > b.strength; });
        shapes.resize(maximum);
    }
    return {std::move(shapes), std::move(walls), edges.isSmoothed};
}

} // namespace lucentra

#include "EdgeMap.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace lucentra {
namespace {

constexpr int cell = 8;          // the threshold is one number a cell
constexpr int cellsPerBlock = 4; // the noise is one number a block of 32 × 32 pixels
constexpr int grain = 9;         // above this median noise the picture is smoothed first
constexpr int faintest = 26;     // what is fainter on a flat background is no letter
constexpr int strongest = 130;   // no texture hides what is stronger

std::uint8_t difference(std::uint8_t a, std::uint8_t b)
{
    return a > b ? a - b : b - a;
}

EdgeMap gradient(const QImage &image)
{
    EdgeMap edges{image.width(), image.height(), {}, false};
    edges.strength.resize(std::size_t(edges.width) * std::size_t(edges.height));
    const int bytes = std::max(0, 4 * (edges.width - 1));
    std::vector<std::uint8_t> steps(std::size_t(bytes), 0);
    for (int y = 0; y + 1 < edges.height; ++y) {
        const uchar *upper = image.constScanLine(y);
        const uchar *lower = image.constScanLine(y + 1);
        for (int i = 0; i < bytes; ++i)
            steps[std::size_t(i)] = std::max(difference(upper[i], lower[i + 4]), difference(upper[i + 4], lower[i]));
        std::uint8_t *out = edges.row(y);
        for (int x = 0; x + 1 < edges.width; ++x) {
            const std::uint8_t *step = steps.data() + 4 * std::ptrdiff_t(x);
            out[x] = std::max(step[0], std::max(step[1], step[2]));
        }
    }
    return edges;
}

/// One number a square of the map, row by row.
struct Grid
{
    int columns = 0;
    int rows = 0;
    std::vector<std::uint8_t> values;

    std::uint8_t &at(int column, int row)
    {
        return values[std::size_t(row) * std::size_t(columns) + std::size_t(column)];
    }
};

Grid gridOver(const EdgeMap &edges, int size)
{
    Grid grid{(edges.width + size - 1) / size, (edges.height + size - 1) / size, {}};
    grid.values.resize(std::size_t(grid.columns) * std::size_t(grid.rows));
    return grid;
}

/// The 40th percentile of each block: letters cover less than that, texture covers all.
Grid noiseOf(const EdgeMap &edges)
{
    const int size = cell * cellsPerBlock;
    Grid noise = gridOver(edges, size);
    for (int row = 0; row < noise.rows; ++row) {
        for (int column = 0; column < noise.columns; ++column) {
            std::array<int, 256> histogram{};
            const int right = std::min(edges.width, (column + 1) * size);
            const int bottom = std::min(edges.height, (row + 1) * size);
            for (int y = row * size; y < bottom; ++y) {
                const std::uint8_t *strength = edges.row(y);
                for (int x = column * size; x < right; ++x)
                    ++histogram[strength[x]];
            }
            int rest = (right - column * size) * (bottom - row * size) * 2 / 5;
            int value = 0;
            while (value < 255 && (rest -= histogram[std::size_t(value)]) >= 0)
                ++value;
            noise.at(column, row) = std::uint8_t(value);
        }
    }
    return noise;
}

Grid maximaOf(const EdgeMap &edges)
{
    Grid maxima = gridOver(edges, cell);
    for (int y = 0; y < edges.height; ++y) {
        const std::uint8_t *row = edges.row(y);
        for (int column = 0; column < maxima.columns; ++column) {
            const int right = std::min(edges.width, (column + 1) * cell);
            std::uint8_t &value = maxima.at(column, y / cell);
            value = std::max(value, *std::max_element(row + std::ptrdiff_t(column) * cell, row + right));
        }
    }
    return maxima;
}

/// Zeroes what is fainter than its cell's threshold.
void dropBelow(EdgeMap &edges, Grid &thresholds)
{
    for (int y = 0; y < edges.height; ++y) {
        std::uint8_t *strength = edges.row(y);
        for (int column = 0; column < thresholds.columns; ++column) {
            const std::uint8_t threshold = thresholds.at(column, y / cell);
            const int right = std::min(edges.width, (column + 1) * cell);
            for (int x = column * cell; x < right; ++x)
                strength[x] = strength[x] < threshold ? 0 : strength[x];
        }
    }
}

void dropTexture(EdgeMap &edges, Grid &noise)
{
    Grid thresholds = gridOver(edges, cell);
    for (int row = 0; row < thresholds.rows; ++row) {
        for (int column = 0; column < thresholds.columns; ++column) {
            const int texture = 10 + 11 * noise.at(column / cellsPerBlock, row / cellsPerBlock) / 5;
            thresholds.at(column, row) = std::uint8_t(std::clamp(texture, faintest, strongest));
        }
    }
    dropBelow(edges, thresholds);
}

/// Every pixel as the mean of its 3 × 3 neighbours; the rim stays as it is.
QImage smoothed(const QImage &image)
{
    QImage result = image.copy();
    const int bytes = 4 * image.width();
    std::vector<std::uint16_t> sums(std::size_t(bytes), 0);
    for (int y = 1; y + 1 < image.height(); ++y) {
        const uchar *above = image.constScanLine(y - 1);
        const uchar *here = image.constScanLine(y);
        const uchar *below = image.constScanLine(y + 1);
        for (int i = 0; i < bytes; ++i)
            sums[std::size_t(i)] = std::uint16_t(above[i] + here[i] + below[i]);
        uchar *out = result.scanLine(y);
        for (int i = 4; i + 4 < bytes; ++i)
            out[i] = uchar((sums[std::size_t(i) - 4] + sums[std::size_t(i)] + sums[std::size_t(i) + 4]) * 7282U >> 16);
    }
    return result;
}

int median(std::vector<std::uint8_t> values)
{
    const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace

EdgeMap edgesOf(const QImage &image)
{
    if (image.width() < 2 || image.height() < 2)
        return {};
    EdgeMap edges = gradient(image);
    Grid noise = noiseOf(edges);
    if (median(noise.values) > grain) {
        edges = gradient(smoothed(image));
        edges.isSmoothed = true;
        noise = noiseOf(edges);
    }
    dropTexture(edges, noise);
    return edges;
}

void dropOvershadowed(EdgeMap &edges, double share)
{
    Grid maxima = maximaOf(edges);
    Grid thresholds = gridOver(edges, cell);
    for (int row = 0; row < maxima.rows; ++row) {
        for (int column = 0; column < maxima.columns; ++column) {
            int strongestNear = 0;
            for (int r = std::max(0, row - 1); r <= std::min(maxima.rows - 1, row + 1); ++r) {
                for (int c = std::max(0, column - 1); c <= std::min(maxima.columns - 1, column + 1); ++c)
                    strongestNear = std::max<int>(strongestNear, maxima.at(c, r));
            }
            thresholds.at(column, row) = std::uint8_t(strongestNear * share);
        }
    }
    dropBelow(edges, thresholds);
}

} // namespace lucentra

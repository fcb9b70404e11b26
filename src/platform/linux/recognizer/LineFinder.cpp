#include "LineFinder.h"

#include "BrightLetters.h"
#include "EdgeShapes.h"
#include "Figure.h"
#include "LineEntries.h"
#include "LineIcons.h"
#include "LineLinking.h"
#include "LineNormalizer.h"
#include "LineRows.h"

#include <algorithm>
#include <map>

namespace lucentra {
namespace {

FoundLine lineOf(const QImage &image, const std::vector<EdgeShape> &shapes)
{
    qint64 pixels = 0;
    qint64 strength = 0;
    for (const EdgeShape &shape : shapes) {
        pixels += shape.edgePixels;
        strength += qint64(shape.strength) * shape.edgePixels;
    }
    const QRect ink = inkOf(shapes);
    const qint64 area = qint64(ink.width()) * ink.height();
    return {ink,
            int(shapes.size()),
            int(strength / pixels),
            double(pixels) / double(area),
            piecesOf(shapes, ink),
            endsInRing(image, shapes, ink),
            false};
}

/// Whether an outline is that of a filled bar, disc or box: hollow as an outline, yet not of the colour around it. (An
/// O is hollow too, but the same paper is within and without.)
bool isFilled(const QImage &image, const EdgeShape &shape, bool isAlone)
{
    constexpr int other = 24; // of 255
    const QRect &ink = shape.ink;
    if (!shape.isHollow || ink.width() < 5)
        return false;
    const QRgb inside = image.pixel(ink.center());
    const auto differs = [&](int x) {
        return distance(inside, image.pixel(std::clamp(x, 0, image.width() - 1), ink.center().y())) > other;
    };
    const bool left = differs(ink.left() - 3);
    const bool right = differs(ink.right() + 3);
    return isAlone ? left || right : left && right; // a neighbour's stroke may be that near
}

/// A button, an avatar, a picture's frame: too compact for a stroke.
bool isBlock(const QImage &image, const EdgeShape &shape)
{
    const int width = shape.ink.width();
    const int height = shape.ink.height();
    return std::min(width, height) >= 12 && 2 * width >= height && 2 * height >= width && isFilled(image, shape, false);
}

/// A spot of one colour on another: a lit window, a leaf, a large full stop.
bool isBlob(const QImage &image, const QRect &ink)
{
    constexpr int other = 24;
    const int width = ink.width();
    const int height = ink.height();
    if (std::min(width, height) < 4 || 5 * width < 2 * height || 5 * height < 2 * width)
        return false;
    const QPoint centre = ink.center();
    const auto differs = [&](const QPoint &step) {
        const QPoint at(std::clamp(centre.x() + step.x(), 0, image.width() - 1),
                        std::clamp(centre.y() + step.y(), 0, image.height() - 1));
        return distance(image.pixel(centre), image.pixel(at)) > other;
    };
    const int x = width / 2 + 2;
    const int y = height / 2 + 2;
    const bool isApart = differs({-x, 0}) && differs({x, 0}) && differs({0, -y}) && differs({0, y});
    const int inX = width / 5;
    const int inY = height / 5;
    return isApart && !differs({-inX, 0}) && !differs({inX, 0}) && !differs({0, -inY}) && !differs({0, inY});
}

/// The shapes without blocks, and without blobs where the picture is full of them.
std::vector<EdgeShape> withoutBlobs(const QImage &image, std::vector<EdgeShape> shapes)
{
    constexpr std::ptrdiff_t full = 60;
    std::erase_if(shapes, [&](const EdgeShape &shape) { return isBlock(image, shape); });
    const auto blobs = std::stable_partition(shapes.begin(), shapes.end(),
                                             [&](const EdgeShape &shape) { return !isBlob(image, shape.ink); });
    if (shapes.end() - blobs >= full)
        shapes.erase(blobs, shapes.end());
    return shapes;
}

/// Whether there is as much edge in a line as letters have (measured on thousands of lines of 9 to 60 pixels): the
/// contour of a hill, the rim of a cloud have far less of it, and fainter.
bool isAsDenseAsWriting(const FoundLine &line, bool isSmoothed)
{
    const int faintest = isSmoothed ? 28 : 40;
    const double size = std::min(1.0, 20.0 / line.ink.height()); // outlines grow with the height, areas with its square
    return line.strength >= faintest && line.density >= (line.shapeCount <= 2 ? 0.32 : 0.14) * size;
}

/// Leaves out single shapes that are everywhere in one size: lit windows, dots, leaves.
QList<FoundLine> withoutPattern(QList<FoundLine> lines)
{
    constexpr int everywhere = 40;
    std::map<std::pair<int, int>, int> sizes;
    const auto sizeOf = [](const FoundLine &line) { return std::pair(line.ink.width() / 2, line.ink.height() / 2); };
    for (const FoundLine &line : lines) {
        if (line.shapeCount <= 2)
            ++sizes[sizeOf(line)];
    }
    erase_if(lines, [&](const FoundLine &line) { return line.shapeCount <= 2 && sizes[sizeOf(line)] >= everywhere; });
    return lines;
}

/// Whether bright letters may make a line, by their number and the room that they take.
bool mayBeBrightLine(const std::vector<EdgeShape> &shapes, int minimumHeight)
{
    const QRect ink = inkOf(shapes);
    return shapes.size() >= 3 && ink.height() >= std::max(9, minimumHeight) && 2 * ink.width() >= 5 * ink.height();
}

/// Whether they stand as close as letters do. On flat ground, where icons are in rows too, they must be closer.
bool areCloseLetters(const std::vector<EdgeShape> &shapes, bool isOnPicture)
{
    int inked = 0;
    for (const EdgeShape &shape : shapes)
        inked += shape.ink.width();
    return shapes.size() >= (isOnPicture ? 3 : 5) && 100 * inked >= (isOnPicture ? 50 : 70) * inkOf(shapes).width();
}

/// Whether it is bright above and below: then the bright shapes are the paper within dark letters.
bool isBrightAround(const QImage &image, const QRect &ink)
{
    int count = 0;
    for (const int y : {ink.top() - ink.height(), ink.bottom() + ink.height()}) {
        const auto *row = reinterpret_cast<const QRgb *>(image.constScanLine(std::clamp(y, 0, image.height() - 1)));
        for (int x = ink.left(); x <= ink.right(); ++x)
            count += levelOf(row[x]) >= brightLevel ? 1 : 0;
    }
    return 10 * count >= 6 * 2 * ink.width();
}

/// The share of a line's width that others of about its height cover.
double coveredShare(const FoundLine &line, const QList<FoundLine> &others)
{
    std::vector<bool> columns(std::size_t(line.ink.width()), false);
    for (const FoundLine &other : others) {
        const QRect common = other.ink & line.ink;
        if (5 * common.height() < 3 * line.ink.height() || 2 * other.ink.height() > 3 * line.ink.height())
            continue;
        const auto first = columns.begin() + (common.left() - line.ink.left());
        std::fill(first, first + common.width(), true);
    }
    return double(std::ranges::count(columns, true)) / line.ink.width();
}

} // namespace

QList<FoundLine> findLines(const QImage &image, int minimumHeight)
{
    EdgeShapes found = shapesIn(edgesOf(image));
    const auto areAllFilled = [&image](const std::vector<EdgeShape> &shapes) {
        return std::all_of(shapes.begin(), shapes.end(),
                           [&](const EdgeShape &shape) { return isFilled(image, shape, shapes.size() == 1); });
    };
    QList<FoundLine> lines;
    const auto addLine = [&](const std::vector<EdgeShape> &row) {
        const QRect ink = inkOf(row);
        // Beside its neighbours a letter may be that low; alone it is a speck.
        const bool isSmall = row.size() < 3 && ink.width() < 2 * ink.height();
        const int least = isSmall ? std::max(7, minimumHeight) : minimumHeight;
        if (row.empty() || ink.height() < least || areAllFilled(row))
            return;
        const FoundLine line = lineOf(image, row);
        if (isAsDenseAsWriting(line, found.areSmoothed))
            lines.append(line);
    };
    const auto forEachRow = [&](const std::vector<EdgeShape> &shapes, const auto &take) {
        for (std::vector<EdgeShape> &group : linkedShapes(shapes, found.walls)) {
            for (std::vector<EdgeShape> &row : rowsOf(withoutSpecks(std::move(group)))) {
                for (std::vector<EdgeShape> &entry : entriesOf(withoutSpecks(std::move(row))))
                    take(withoutIcons(image, std::move(entry)));
            }
        }
    };
    forEachRow(withoutBlobs(image, withoutBoxes(image, std::move(found.shapes))), addLine);
    lines = withoutPattern(std::move(lines));
    QList<FoundLine> rivals;
    forEachRow(brightLettersIn(image), [&](const std::vector<EdgeShape> &row) {
        if (!mayBeBrightLine(row, minimumHeight) || isBrightAround(image, inkOf(row)))
            return;
        const bool isOnPicture = LineNormalizer(image, inkOf(row)).isVaried();
        FoundLine rival = lineOf(image, row);
        rival.isRival = true;
        // Flat ground tears no line, but some are lost there.
        if (areCloseLetters(row, isOnPicture) && coveredShare(rival, lines) < (isOnPicture ? 0.85 : 0.1))
            rivals.append(rival);
    });
    return lines + rivals;
}

} // namespace lucentra

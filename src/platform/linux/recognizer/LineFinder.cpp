#include "LineFinder.h"

#include "EdgeShapes.h"
#include "LineEntries.h"
#include "LineIcons.h"
#include "LineRows.h"

#include <algorithm>
#include <map>
#include <numeric>

namespace lucentra {
namespace {

constexpr int band = 32;       // pixels; neighbours are looked for within the bands that a shape touches
constexpr int neighbours = 48; // at most so many to the right are tried

/// Shapes that have been linked.
struct Group
{
    QRect ink;
    std::vector<EdgeShape> shapes;
};

int strengthOf(const Group &group)
{
    int strength = 0;
    for (const EdgeShape &shape : group.shapes)
        strength = std::max(strength, shape.strength);
    return strength;
}

int tallestOf(const Group &group)
{
    int tallest = 0;
    for (const EdgeShape &shape : group.shapes)
        tallest = std::max(tallest, shape.ink.height());
    return tallest;
}

/// What linking needs to know of a group.
struct Box
{
    QRect ink;
    int count = 1;    // of shapes
    int strength = 0; // of the strongest
    int tallest = 0;  // of the shapes, pixels
};

/// How near two groups must be, and how like one another.
struct Nearness
{
    double gap;         // at most, in heights
    double heightRatio; // of two single shapes, at most
    double growth;      // of a line by a shape or two, at most
};

constexpr Nearness likeLetters{0.65, 2.0, 1.5};     // letters of about one size
constexpr Nearness likePunctuation{0.65, 100, 1.9}; // and what is smaller or, like a parenthesis, larger
constexpr Nearness likeWords{1.15, 100, 1.4};       // an icon beside the text is larger than that

bool belongTogether(const Box &a, const Box &b, const Nearness &nearness)
{
    const Box &line = a.count != b.count ? (a.count > b.count ? a : b) : (a.ink.height() > b.ink.height() ? a : b);
    const int overlap = std::min(a.ink.bottom(), b.ink.bottom()) - std::max(a.ink.top(), b.ink.top()) + 1;
    const int lower = std::min(a.ink.height(), b.ink.height());
    const int higher = std::max(a.ink.height(), b.ink.height());
    const int gap = std::max(a.ink.left(), b.ink.left()) - std::min(a.ink.right(), b.ink.right()) - 1;
    const int together = std::max(a.ink.bottom(), b.ink.bottom()) - std::min(a.ink.top(), b.ink.top()) + 1;
    const int tallest = std::max(a.tallest, b.tallest);
    const bool isDot = lower <= std::max(5, higher / 4);
    const int lowersWidth = a.ink.height() < b.ink.height() ? a.ink.width() : b.ink.width();
    // An underscore lies below the other letters, as does a bar, which is longer.
    const int reach = isDot && 2 * lowersWidth <= 3 * higher ? higher * 2 / 5 : 0;
    if (together > 1.6 * tallest + 1)
        return false; // from letter to letter it climbs
    const bool isSpeck = std::max(lower, lowersWidth) <= std::max(3, higher / 6);
    if (isSpeck && gap > 0 && (gap > 0.7 * tallest + 1 || together > 1.25 * tallest + 1))
        return false; // a star beside the text
    if (2 * (overlap + reach) < lower || higher > nearness.heightRatio * lower || together > 1.3 * higher + 1)
        return false;
    // What shines through a translucent panel isn't part of the text on it.
    const bool areLines = a.count >= 3 && b.count >= 3;
    const double similarity = std::min(a.strength, b.strength) / double(std::max(a.strength, b.strength));
    if (similarity < (areLines || lower < 6 ? 0.33 : 0.45))
        return false;
    if (areLines && higher > 1.7 * lower)
        return false;
    if (line.count >= 3) {
        const double height = line.ink.height();
        return together <= nearness.growth * height + 1 && gap <= nearness.gap * std::min<double>(higher, 1.6 * height);
    }
    if (higher <= 2 * lower)
        return gap <= nearness.gap * higher;
    // A dot beside a letter, but no letter beside a large icon.
    return gap <= (isDot ? 0.7 : 0.3) * higher;
}

/// The groups under construction; one that has been taken into another points to it.
class Linking
{
public:
    Linking(std::vector<Box> boxes, const Walls &walls)
        : m_boxes(std::move(boxes))
        , m_walls(walls)
        , m_parents(m_boxes.size())
    {
        std::iota(m_parents.begin(), m_parents.end(), 0U);
    }

    std::size_t groupOf(std::size_t index)
    {
        while (m_parents[index] != index)
            index = m_parents[index] = m_parents[m_parents[index]];
        return index;
    }

    bool link(std::size_t a, std::size_t b, const Nearness &nearness)
    {
        a = groupOf(a);
        b = groupOf(b);
        if (a == b || !belongTogether(m_boxes[a], m_boxes[b], nearness) ||
            m_walls.standBetween(m_boxes[a].ink, m_boxes[b].ink))
            return false;
        m_parents[b] = a;
        m_boxes[a].ink |= m_boxes[b].ink;
        m_boxes[a].count += m_boxes[b].count;
        m_boxes[a].strength = std::max(m_boxes[a].strength, m_boxes[b].strength);
        m_boxes[a].tallest = std::max(m_boxes[a].tallest, m_boxes[b].tallest);
        return true;
    }

private:
    std::vector<Box> m_boxes;
    const Walls &m_walls;
    std::vector<std::size_t> m_parents;
};

/// For every band of rows the boxes that touch it, from left to right.
std::vector<std::vector<std::size_t>> bandsOf(const std::vector<QRect> &boxes)
{
    int bottom = 0;
    for (const QRect &box : boxes)
        bottom = std::max(bottom, box.bottom());
    std::vector<std::size_t> order(boxes.size());
    std::iota(order.begin(), order.end(), 0U);
    std::sort(order.begin(), order.end(),
              [&](std::size_t a, std::size_t b) { return boxes[a].left() < boxes[b].left(); });
    std::vector<std::vector<std::size_t>> bands(std::size_t(bottom / band) + 1);
    for (const std::size_t index : order) {
        for (int i = boxes[index].top() / band; i <= boxes[index].bottom() / band; ++i)
            bands[std::size_t(i)].push_back(index);
    }
    return bands;
}

/// Links once through all bands.
bool linkNeighbours(const std::vector<QRect> &boxes, Linking &linking, const Nearness &nearness)
{
    bool hasLinked = false;
    for (const std::vector<std::size_t> &members : bandsOf(boxes)) {
        int highest = 0;
        for (const std::size_t index : members)
            highest = std::max(highest, boxes[index].height());
        for (std::size_t i = 0; i < members.size(); ++i) {
            const QRect &box = boxes[members[i]];
            const std::size_t end = std::min(members.size(), i + 1 + neighbours);
            for (std::size_t j = i + 1; j < end && boxes[members[j]].left() - box.right() <= nearness.gap * highest + 1;
                 ++j)
                hasLinked |= linking.link(members[i], members[j], nearness);
        }
    }
    return hasLinked;
}

std::vector<Group> gathered(std::vector<Group> groups, Linking &linking)
{
    for (std::size_t i = 0; i < groups.size(); ++i) {
        Group &target = groups[linking.groupOf(i)];
        if (&target == &groups[i])
            continue;
        target.ink |= groups[i].ink;
        target.shapes.insert(target.shapes.end(), groups[i].shapes.begin(), groups[i].shapes.end());
        groups[i].shapes.clear();
    }
    std::erase_if(groups, [](const Group &group) { return group.shapes.empty(); });
    return groups;
}

std::vector<Group> linked(std::vector<Group> groups, const Walls &walls, const Nearness &nearness)
{
    constexpr int rounds = 4;
    for (int round = 0; round < rounds; ++round) {
        std::vector<QRect> boxes;
        std::vector<Box> counted;
        for (const Group &group : groups) {
            boxes.push_back(group.ink);
            counted.push_back({group.ink, int(group.shapes.size()), strengthOf(group), tallestOf(group)});
        }
        Linking linking(std::move(counted), walls);
        if (!linkNeighbours(boxes, linking, nearness))
            break;
        groups = gathered(std::move(groups), linking);
    }
    return groups;
}

Group groupOf(std::vector<EdgeShape> shapes)
{
    const QRect ink = inkOf(shapes);
    return {ink, std::move(shapes)};
}

FoundLine lineOf(const QImage &image, const Group &group)
{
    qint64 pixels = 0;
    qint64 strength = 0;
    for (const EdgeShape &shape : group.shapes) {
        pixels += shape.edgePixels;
        strength += qint64(shape.strength) * shape.edgePixels;
    }
    const qint64 area = qint64(group.ink.width()) * group.ink.height();
    return {group.ink,
            int(group.shapes.size()),
            int(strength / pixels),
            double(pixels) / double(area),
            piecesOf(group.shapes, group.ink),
            endsInRing(image, group.shapes, group.ink)};
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
        const QRgb outside = image.pixel(std::clamp(x, 0, image.width() - 1), ink.center().y());
        return std::abs(qRed(inside) - qRed(outside)) > other || std::abs(qGreen(inside) - qGreen(outside)) > other ||
               std::abs(qBlue(inside) - qBlue(outside)) > other;
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
        const QRgb a = image.pixel(centre);
        const QRgb b = image.pixel(at);
        return std::abs(qRed(a) - qRed(b)) > other || std::abs(qGreen(a) - qGreen(b)) > other ||
               std::abs(qBlue(a) - qBlue(b)) > other;
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

} // namespace

QList<FoundLine> findLines(const QImage &image, int minimumHeight)
{
    EdgeShapes found = shapesIn(edgesOf(image));
    std::vector<Group> groups;
    for (const EdgeShape &shape : withoutBlobs(image, withoutMarksInBoxes(image, std::move(found.shapes))))
        groups.push_back({shape.ink, {shape}});
    for (const Nearness &nearness : {likeLetters, likePunctuation, likeWords})
        groups = linked(std::move(groups), found.walls, nearness);

    const auto areAllFilled = [&image](const Group &group) {
        return std::all_of(group.shapes.begin(), group.shapes.end(),
                           [&](const EdgeShape &shape) { return isFilled(image, shape, group.shapes.size() == 1); });
    };
    QList<FoundLine> lines;
    const auto addLine = [&](const Group &row) {
        // Beside its neighbours a letter may be that low; alone it is a speck.
        const bool isSmall = row.shapes.size() < 3 && row.ink.width() < 2 * row.ink.height();
        const int least = isSmall ? std::max(7, minimumHeight) : minimumHeight;
        if (row.shapes.empty() || row.ink.height() < least || areAllFilled(row))
            return;
        const FoundLine line = lineOf(image, row);
        if (isAsDenseAsWriting(line, found.areSmoothed))
            lines.append(line);
    };
    for (Group &group : groups) {
        for (std::vector<EdgeShape> &row : rowsOf(withoutSpecks(std::move(group.shapes)))) {
            for (std::vector<EdgeShape> &entry : entriesOf(withoutSpecks(std::move(row))))
                addLine(groupOf(withoutIcons(image, std::move(entry))));
        }
    }
    return withoutPattern(std::move(lines));
}

} // namespace lucentra

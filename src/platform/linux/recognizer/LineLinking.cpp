#include "LineLinking.h"

#include <algorithm>
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
    const bool isSpeck = std::max(lower, lowersWidth) <= std::max(3, higher / 6);
    // An underscore lies below the other letters, as does a bar, which is longer; an accent above them, as does a star,
    // which is farther off.
    const bool mayBeApart = isDot && 2 * lowersWidth <= 3 * higher;
    const int reach = mayBeApart ? higher * (isSpeck ? 3 : 4) / 10 : 0;
    if (together > 1.6 * tallest + 1)
        return false; // from letter to letter it climbs
    if (gap > 0 && lower <= 3 && lowersWidth > 5 * higher / 2)
        return false; // a rule
    const Box &taller = a.ink.height() < b.ink.height() ? b : a;
    if (2 * gap > lower && taller.count == 1 && taller.ink.width() <= 2 && 20 * higher > 29 * lower && lower > 5)
        return false; // the side of a bubble
    // Descenders make a line higher than its tallest letter is.
    const double lineHeight = std::max(1.25 * tallest + 1, std::min<double>(higher, 1.4 * tallest));
    if (isSpeck && gap > 0 && (gap > 0.7 * tallest + 1 || together > lineHeight))
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

} // namespace

std::vector<std::vector<EdgeShape>> linkedShapes(const std::vector<EdgeShape> &shapes, const Walls &walls)
{
    std::vector<Group> groups;
    groups.reserve(shapes.size());
    for (const EdgeShape &shape : shapes)
        groups.push_back({shape.ink, {shape}});
    for (const Nearness &nearness : {likeLetters, likePunctuation, likeWords})
        groups = linked(std::move(groups), walls, nearness);
    std::vector<std::vector<EdgeShape>> result;
    result.reserve(groups.size());
    for (Group &group : groups)
        result.push_back(std::move(group.shapes));
    return result;
}

} // namespace lucentra

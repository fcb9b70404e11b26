#include "LineFinder.h"

#include "EdgeShapes.h"

#include <algorithm>
#include <numeric>

namespace lucentra {
namespace {

constexpr int band = 32;           // pixels; neighbours are looked for within the bands that a shape touches
constexpr int neighbours = 48;     // at most so many to the right are tried
constexpr double letterGap = 0.65; // of the height; what is nearer belongs together in any case
constexpr double wordGap = 0.95;

/// Shapes that have been linked.
struct Group
{
    QRect ink;
    std::vector<EdgeShape> shapes;
};

bool belongTogether(const QRect &a, const QRect &b, double gapLimit)
{
    const int overlap = std::min(a.bottom(), b.bottom()) - std::max(a.top(), b.top()) + 1;
    const int lower = std::min(a.height(), b.height());
    const int higher = std::max(a.height(), b.height());
    const int gap = std::max(a.left(), b.left()) - std::min(a.right(), b.right()) - 1;
    const int together = std::max(a.bottom(), b.bottom()) - std::min(a.top(), b.top()) + 1;
    return 2 * overlap >= lower && gap <= gapLimit * higher && together <= 1.3 * higher + 1;
}

/// The groups under construction; one that has been taken into another points to it.
class Linking
{
public:
    explicit Linking(const std::vector<QRect> &boxes)
        : m_boxes(boxes)
        , m_parents(boxes.size())
    {
        std::iota(m_parents.begin(), m_parents.end(), 0U);
    }

    std::size_t groupOf(std::size_t index)
    {
        while (m_parents[index] != index)
            index = m_parents[index] = m_parents[m_parents[index]];
        return index;
    }

    bool link(std::size_t a, std::size_t b, double gapLimit)
    {
        a = groupOf(a);
        b = groupOf(b);
        if (a == b || !belongTogether(m_boxes[a], m_boxes[b], gapLimit))
            return false;
        m_parents[b] = a;
        m_boxes[a] |= m_boxes[b];
        return true;
    }

private:
    std::vector<QRect> m_boxes;
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
bool linkNeighbours(const std::vector<QRect> &boxes, Linking &linking, double gapLimit)
{
    bool hasLinked = false;
    for (const std::vector<std::size_t> &members : bandsOf(boxes)) {
        int highest = 0;
        for (const std::size_t index : members)
            highest = std::max(highest, boxes[index].height());
        for (std::size_t i = 0; i < members.size(); ++i) {
            const QRect &box = boxes[members[i]];
            const std::size_t end = std::min(members.size(), i + 1 + neighbours);
            for (std::size_t j = i + 1; j < end && boxes[members[j]].left() - box.right() <= gapLimit * highest + 1;
                 ++j)
                hasLinked |= linking.link(members[i], members[j], gapLimit);
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

std::vector<Group> linked(std::vector<Group> groups, double gapLimit)
{
    constexpr int rounds = 4;
    for (int round = 0; round < rounds; ++round) {
        std::vector<QRect> boxes;
        for (const Group &group : groups)
            boxes.push_back(group.ink);
        Linking linking(boxes);
        if (!linkNeighbours(boxes, linking, gapLimit))
            break;
        groups = gathered(std::move(groups), linking);
    }
    return groups;
}

Group groupOf(std::vector<EdgeShape> shapes)
{
    Group group;
    for (const EdgeShape &shape : shapes)
        group.ink |= shape.ink;
    group.shapes = std::move(shapes);
    return group;
}

/// Two rows that a tall shape (a brace, an icon) had held together come apart at the empty band between them.
std::vector<Group> splitRows(Group group)
{
    std::vector<int> cover(std::size_t(group.ink.height()), 0);
    std::vector<EdgeShape> letters;
    for (const EdgeShape &shape : group.shapes) {
        if (shape.ink.height() * 5 > group.ink.height() * 4)
            continue;
        letters.push_back(shape);
        for (int y = shape.ink.top(); y <= shape.ink.bottom(); ++y)
            ++cover[std::size_t(y - group.ink.top())];
    }
    const int third = group.ink.height() / 3;
    const auto middle = cover.begin() + third;
    const auto empty = std::find(middle, cover.end() - third, 0);
    if (letters.size() < 6 || empty >= cover.end() - third)
        return {std::move(group)};
    const int cut = group.ink.top() + int(empty - cover.begin());
    const auto lower = std::partition(letters.begin(), letters.end(),
                                      [cut](const EdgeShape &shape) { return shape.ink.bottom() < cut; });
    if (lower - letters.begin() < 3 || letters.end() - lower < 3)
        return {std::move(group)};
    return {groupOf({letters.begin(), lower}), groupOf({lower, letters.end()})};
}

FoundLine lineOf(const Group &group)
{
    qint64 pixels = 0;
    qint64 strength = 0;
    for (const EdgeShape &shape : group.shapes) {
        pixels += shape.edgePixels;
        strength += qint64(shape.strength) * shape.edgePixels;
    }
    const qint64 area = qint64(group.ink.width()) * group.ink.height();
    return {group.ink, int(group.shapes.size()), int(strength / pixels), double(pixels) / double(area)};
}

} // namespace

QList<FoundLine> findLines(const QImage &image, int minimumHeight)
{
    std::vector<Group> groups;
    for (const EdgeShape &shape : shapesIn(edgesOf(image)))
        groups.push_back({shape.ink, {shape}});
    groups = linked(linked(std::move(groups), letterGap), wordGap);

    QList<FoundLine> lines;
    for (Group &group : groups) {
        for (const Group &row : splitRows(std::move(group))) {
            if (row.ink.height() >= minimumHeight)
                lines.append(lineOf(row));
        }
    }
    return lines;
}

} // namespace lucentra

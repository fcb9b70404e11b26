#include "LineIcons.h"

#include "Figure.h"
#include "IconLooks.h"

#include <algorithm>

namespace lucentra {
namespace {

constexpr int largestBox = 48; // pixels
constexpr int mostIcons = 3;   // before a label: an arrow, a check box, a picture

QRgb pixelAt(const QImage &image, const QPoint &at)
{
    return image.pixel(std::clamp(at.x(), 0, image.width() - 1), std::clamp(at.y(), 0, image.height() - 1));
}

bool isAsWideAsHigh(const Figure &figure)
{
    return 7 * figure.width() >= 6 * figure.height() && 7 * figure.height() >= 6 * figure.width();
}

/// All four sides straight and closed.
bool isFramed(const Figure &figure)
{
    if (!isAsWideAsHigh(figure) || figure.width() < 8)
        return false;
    const auto isSide = [&](int length, const auto &hasInk) {
        int count = 0;
        for (int i = 0; i < length; ++i)
            count += hasInk(i) ? 1 : 0;
        return 5 * count >= 4 * length;
    };
    const int right = figure.width() - 1;
    const int bottom = figure.height() - 1;
    return isSide(figure.width(), [&](int x) { return figure.hasInk(x, 0) || figure.hasInk(x, 1); }) &&
           isSide(figure.width(), [&](int x) { return figure.hasInk(x, bottom) || figure.hasInk(x, bottom - 1); }) &&
           isSide(figure.height(), [&](int y) { return figure.hasInk(0, y) || figure.hasInk(1, y); }) &&
           isSide(figure.height(), [&](int y) { return figure.hasInk(right, y) || figure.hasInk(right - 1, y); });
}

/// A short arm down and a long one up to the right; a V has its arms of one height.
bool isTick(const Figure &figure)
{
    const bool isEmptyAbove = figure.share(0, 0, 0.4, 0.25) < 0.05;
    const bool isEmptyBelow = figure.share(0.7, 0.7, 1, 1) < 0.05 && figure.share(0, 0.8, 0.12, 1) < 0.3;
    return figure.width() >= 5 && 5 * figure.width() >= 3 * figure.height() && isEmptyAbove && isEmptyBelow &&
           figure.share(0.75, 0, 1, 0.3) > 0.15 && figure.share(0, 0.3, 0.3, 0.8) > 0.1 &&
           figure.share(0.15, 0.75, 0.65, 1) > 0.2;
}

/// Filled, and narrowing steadily from one side to the opposite one.
bool isTriangle(const Figure &figure)
{
    if (figure.width() < 4 || figure.height() < 3 || figure.width() > 3 * figure.height() ||
        figure.height() > 3 * figure.width())
        return false;
    const auto narrows = [](int count, int across, const auto &runsAt) {
        int grows = 0;
        int falls = 0;
        // The tip may be too faint.
        const int start = runsAt(0).first == 0 ? 1 : 0;
        const int end = runsAt(count - 1).first == 0 ? count - 1 : count;
        for (int i = start + 1; i < end; ++i) {
            const auto [runs, length] = runsAt(i);
            if (runs != 1)
                return false;
            const int before = runsAt(i - 1).second;
            if (std::abs(length - before) > std::max(4, 5 * across / (2 * count)))
                return false; // the stem of a 1 beside its flag
            grows += length > before ? 1 : 0;
            falls += length < before ? 1 : 0;
        }
        const int first = runsAt(start).second;
        const int last = runsAt(end - 1).second;
        return std::min(grows, falls) == 0 && std::abs(first - last) >= across / 2 && grows + falls >= count / 3;
    };
    return narrows(figure.height(), figure.width(), [&](int y) { return figure.runsOfRow(y); }) ||
           narrows(figure.width(), figure.height(), [&](int x) { return figure.runsOfColumn(x); });
}

/// The three bars of a menu button: of one length, other than those of the ideograph for three.
bool isThreeBars(const Figure &figure)
{
    const auto columns = {figure.runsOfColumn(figure.width() / 5), figure.runsOfColumn(figure.width() / 2),
                          figure.runsOfColumn(figure.width() * 4 / 5)};
    return figure.width() >= 8 &&
           std::all_of(columns.begin(), columns.end(), [](const auto &runs) { return runs.first == 3; });
}

/// Shapes that stand above or within one another, as the parts of one figure do.
struct Cluster
{
    QRect ink;
    QRect hollow; // its largest hollow outline
    int widest = 0;
    std::size_t count = 0; // of shapes

    /// Side by side there would be letters.
    bool isOneFigure() const { return 8 * ink.width() <= 9 * widest + 8; }
    /// A ring or a frame as wide as high, empty or around a mark.
    bool isRing(int leastWidth = 8) const
    {
        return hollow == ink && ink.width() >= leastWidth && 7 * ink.width() >= 6 * ink.height() &&
               7 * ink.height() >= 6 * ink.width();
    }
};

/// The cluster at the beginning of the shapes; `from` and `to` run to the right or, from the end, to the left.
template <typename Iterator>
Cluster clusterAt(Iterator from, Iterator to, int gap)
{
    Cluster cluster;
    for (; from != to; ++from) {
        const QRect &ink = from->ink;
        const int apart = std::max(ink.left() - cluster.ink.right(), cluster.ink.left() - ink.right()) - 1;
        if (cluster.count > 0 && apart >= gap)
            break;
        cluster.ink |= ink;
        cluster.widest = std::max(cluster.widest, ink.width());
        if (from->isHollow && ink.width() > cluster.hollow.width())
            cluster.hollow = ink;
        ++cluster.count;
    }
    return cluster;
}

/// How a figure stands beside the text.
struct Beside
{
    QRect figure;
    QRect text;
    QRgb paper;
    bool isBefore;
    bool isRing;
    bool isFarOff;
};

/// Taller than the text by a good part, above and below.
bool overtops(const Beside &beside)
{
    const int above = beside.text.top() - beside.figure.top();
    const int below = beside.figure.bottom() - beside.text.bottom();
    const int share = beside.isBefore ? 25 : 40; // per cent
    return above >= 1 && below >= 1 && 100 * (above + below) >= share * beside.text.height() &&
           2 * beside.figure.width() >= beside.figure.height();
}

/// A bullet, a disc, a patch: as wide as high and of one colour.
bool isSolid(const QImage &image, const QRect &ink, QRgb paper)
{
    constexpr int same = 24; // of 255
    if (std::min(ink.width(), ink.height()) < 4 || 4 * std::abs(ink.width() - ink.height()) > ink.height())
        return false;
    const QRgb colour = pixelAt(image, ink.center());
    const QRect inner = ink.adjusted(ink.width() / 5, ink.height() / 5, -ink.width() / 5, -ink.height() / 5);
    for (int y = inner.top(); y <= inner.bottom(); ++y) {
        for (int x = inner.left(); x <= inner.right(); ++x) {
            if (distance(colour, pixelAt(image, {x, y})) > same)
                return false;
        }
    }
    return distance(colour, paper) > 2 * same;
}

/// Whether there is just an icon: the arrow of a drop-down list, a tool's picture.
bool isIconAlone(const QImage &image, const std::vector<EdgeShape> &shapes)
{
    const Cluster cluster = clusterAt(shapes.begin(), shapes.end(), 2);
    if (cluster.count < shapes.size() || !cluster.isOneFigure())
        return false;
    const QRgb paper = pixelAt(image, {cluster.ink.left() - 3, cluster.ink.center().y()});
    return isTriangle(Figure(image, cluster.ink, paper)) || isSolid(image, cluster.ink, paper);
}

bool isIcon(const QImage &image, const Beside &beside)
{
    const Figure figure(image, beside.figure, beside.paper);
    const int height = beside.text.height();
    const bool isMark = 100 * std::max(figure.width(), figure.height()) < 35 * height; // a dot, a comma
    if ((!isMark && isTriangle(figure)) || (beside.isFarOff && (isFramed(figure) || overtops(beside))))
        return true;
    if (!beside.isBefore)
        return false;
    const Figure text(image, beside.text, beside.paper);
    const bool isSquare = 100 * figure.width() >= 80 * height && 100 * figure.height() >= 80 * height;
    const bool isOfOtherColour = distance(figure.colour(), text.colour()) > 90;
    return (!isMark && isSolid(image, beside.figure, beside.paper)) || isTick(figure) || isThreeBars(figure) ||
           (isSquare && isOfOtherColour) || (beside.isFarOff && beside.isRing);
}

/// Takes away an icon at one of the ends. False where there is none.
bool dropIcon(const QImage &image, std::vector<EdgeShape> &shapes, bool isBefore)
{
    const int lineHeight = inkOf(shapes).height();
    const int least = std::max(3, lineHeight / 5);
    const Cluster cluster =
        isBefore ? clusterAt(shapes.begin(), shapes.end(), least) : clusterAt(shapes.rbegin(), shapes.rend(), least);
    if (cluster.count == shapes.size() || !cluster.isOneFigure())
        return false;
    const auto count = std::ptrdiff_t(cluster.count);
    std::vector<EdgeShape> rest(isBefore ? shapes.begin() + count : shapes.begin(),
                                isBefore ? shapes.end() : shapes.end() - count);
    const QRect text = inkOf(rest);
    const int gap = isBefore ? text.left() - cluster.ink.right() - 1 : cluster.ink.left() - text.right() - 1;
    if (6 * gap < text.height() || 3 * cluster.ink.width() > 4 * cluster.ink.height() + 6)
        return false;
    const int middle = isBefore ? cluster.ink.right() + gap / 2 + 1 : text.right() + gap / 2 + 1;
    const QRgb paper = pixelAt(image, QPoint(middle, text.center().y()));
    // Small kana and a narrow 1 leave more room beside them than others, a number before an ideograph at the end as
    // well.
    const bool isFarOff = 100 * gap >= (isBefore ? 50 : 70) * text.height();
    const std::vector<EdgeShape> figure(isBefore ? shapes.begin() : shapes.end() - count,
                                        isBefore ? shapes.begin() + count : shapes.end());
    if (!(3 * gap >= text.height() &&
          isIcon(image, {cluster.ink, text, paper, isBefore, cluster.isRing(), isFarOff})) &&
        !looksLikeIcon(image, figure, rest, paper))
        return false;
    shapes = std::move(rest);
    return true;
}

/// Two to four figures far apart with a frame among them, or nearer and half of them framed: a title bar's buttons.
bool areButtons(const std::vector<EdgeShape> &shapes)
{
    constexpr int smallest = 5; // pixels, of the sign for maximising
    const QRect line = inkOf(shapes);
    for (const int share : {40, 20}) {
        std::vector<Cluster> clusters;
        for (auto at = shapes.begin(); at != shapes.end(); at += std::ptrdiff_t(clusters.back().count))
            clusters.push_back(clusterAt(at, shapes.end(), std::max(2, line.height() * share / 100)));
        const auto rings = std::count_if(clusters.begin(), clusters.end(),
                                         [](const Cluster &cluster) { return cluster.isRing(smallest); });
        // The letters of a small font may run together, but not in a figure.
        const bool areFigures = std::all_of(clusters.begin(), clusters.end(), [&line](const Cluster &cluster) {
            return cluster.isOneFigure() && 2 * cluster.ink.width() <= 3 * line.height();
        });
        const auto count = std::ssize(clusters);
        if (areFigures && count >= 2 && count <= 4 && (share == 40 ? rings >= 1 : 2 * rings >= count))
            return true;
    }
    return false;
}

/// A box as high as wide whose ground is of one colour, and not that around it.
bool isBox(const QImage &image, const QRect &ink)
{
    constexpr int other = 12; // of 255; a check box in a dark theme is hardly lighter than the window
    const int side = std::min(ink.width(), ink.height());
    if (side < 8 || side > largestBox || std::abs(ink.width() - ink.height()) > std::max(1, side / 8))
        return false;
    const int inset = std::max(2, side / 6);
    const QRect within = ink.adjusted(inset, inset, -inset, -inset);
    const QRgb ground = pixelAt(image, within.topLeft());
    int grounds = 0;
    for (int y = within.top(); y <= within.bottom(); ++y) {
        for (int x = within.left(); x <= within.right(); ++x)
            grounds += distance(ground, pixelAt(image, QPoint(x, y))) <= other ? 1 : 0;
    }
    // A mark leaves more than half of its box; the counter of an o is larger.
    if (100 * grounds < 56 * within.width() * within.height())
        return false;
    const QPoint centre = ink.center();
    for (const QPoint &outside : {QPoint(ink.left() - 3, centre.y()), QPoint(ink.right() + 3, centre.y()),
                                  QPoint(centre.x(), ink.top() - 3), QPoint(centre.x(), ink.bottom() + 3)}) {
        if (distance(ground, pixelAt(image, outside)) <= other)
            return false;
    }
    return true;
}

} // namespace

std::vector<EdgeShape> withoutIcons(const QImage &image, std::vector<EdgeShape> shapes)
{
    if (shapes.empty() || areButtons(shapes))
        return {};
    for (const bool isBefore : {true, false}) {
        for (int i = 0; i < mostIcons && dropIcon(image, shapes, isBefore); ++i) {
        }
    }
    if (isIconAlone(image, shapes))
        return {};
    return shapes;
}

std::vector<EdgeShape> withoutBoxes(const QImage &image, std::vector<EdgeShape> shapes)
{
    std::vector<QRect> boxes;
    for (const EdgeShape &shape : shapes) {
        if (shape.isHollow && isBox(image, shape.ink))
            boxes.push_back(shape.ink);
    }
    std::sort(boxes.begin(), boxes.end(), [](const QRect &a, const QRect &b) { return a.left() < b.left(); });
    std::erase_if(shapes, [&](const EdgeShape &shape) {
        auto box = std::upper_bound(boxes.begin(), boxes.end(), shape.ink.left(),
                                    [](int left, const QRect &other) { return left < other.left(); });
        for (; box != boxes.begin() && std::prev(box)->left() + largestBox > shape.ink.left(); --box) {
            const QRect &around = *std::prev(box);
            if (around == shape.ink)
                return true;
            if (around.contains(shape.ink) && 3 * shape.ink.height() >= around.height())
                return true;
        }
        return false;
    });
    return shapes;
}

} // namespace lucentra

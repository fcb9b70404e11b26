#include "find/MapLines.h"

#include "Mask.h"
#include "find/LineMarks.h"

#include <algorithm>
#include <numeric>

namespace lucentra {
namespace {

// Of 255.
constexpr int leastCore = 120;
constexpr int leastMeanCore = 153; // over a line
constexpr int leastInk = 77;

// Heights of the line.
constexpr double leastLatin = 3; // wide; what is shorter Chinese and Japanese read as well
constexpr double leastWide = 0.9;
constexpr double spaceWidth = 0.25; // of a gap

constexpr double flat = 1.4;       // of the core's height at half size; a full character has four
constexpr double rowValley = 0.85; // of how sure the net is above and below; between two rows it is less
constexpr int leastArea = 3;       // half pixels; of a line's core
constexpr double reach = 0.8;      // of the core's height; ink that is farther off belongs to nothing

/// A connected part of the core, at half size: half as high as its line's letters.
struct Core
{
    QRect box;
    int area = 0;
    int sum = 0; // of how sure the net is of each place
    double thickness = 0;

    /// Whether it is high enough for two rows of the smallest print.
    bool mayBeRows() const { return box.height() >= 6; }
    bool isSure() const { return area >= leastArea && sum >= leastMeanCore * area; }
};

/// Which line each place at half size belongs to, if any: 1 for the first core.
struct Places
{
    int width;
    int height;
    std::vector<int> lines;
    std::vector<int> distances; // to the core, in thirds of half pixels

    std::size_t at(int x, int y) const { return std::size_t(y) * std::size_t(width) + std::size_t(x); }
};

/// The connected parts of a mask, and in `places` which place is in which.
std::vector<Core> labelled(const Strip &mask, const TextMaps &maps, Places &places)
{
    const Strip numbers(pixConnCompTransform(mask.get(), 4, 32));
    std::vector<Core> cores;
    for (int y = 0; y < places.height; ++y) {
        const l_uint32 *row = pixGetData(numbers.get()) + std::ptrdiff_t(y) * pixGetWpl(numbers.get());
        for (int x = 0; x < places.width; ++x) {
            const std::size_t number = row[x];
            places.lines[places.at(x, y)] = int(number);
            if (number == 0)
                continue;
            cores.resize(std::max(cores.size(), number));
            Core &core = cores[number - 1];
            core.box |= QRect(x, y, 1, 1);
            core.area += 1;
            core.sum += maps.core.row(y)[x];
        }
    }
    for (Core &core : cores)
        core.thickness = std::clamp(1.15 * core.area / core.box.width(), 1.0, double(core.box.height()));
    return cores;
}

/// Cuts cores that are several rows: of rows that are close to one another the net sees the cores hang together in
/// places. What is less sure than what is above it and below it, on average over some columns, is between two rows.
void cutRows(const Strip &mask, const std::vector<Core> &cores, const SureMap &core, const Places &places)
{
    constexpr int columns = 12; // half pixels to each side
    for (std::size_t i = 0; i < cores.size(); ++i) {
        if (!cores[i].mayBeRows())
            continue;
        const QRect &box = cores[i].box;
        for (int x = box.left(); x <= box.right(); ++x) {
            const int left = std::max(0, x - columns);
            const int right = std::min(core.width - 1, x + columns);
            std::vector<int> sums;
            for (int y = box.top(); y <= box.bottom(); ++y)
                sums.push_back(std::accumulate(core.row(y) + left, core.row(y) + right + 1, 0));
            std::vector<int> below(sums.size());
            std::inclusive_scan(sums.rbegin(), sums.rend(), below.rbegin(),
                                [](int a, int b) { return std::max(a, b); });
            int above = 0;
            for (int y = box.top(); y <= box.bottom(); ++y) {
                const std::size_t at = std::size_t(y - box.top());
                above = std::max(above, sums[at]);
                if (places.lines[places.at(x, y)] == int(i) + 1 && rowValley * std::min(above, below[at]) > sums[at])
                    pixSetPixel(mask.get(), x, y, 0);
            }
        }
    }
}

/// The cores, and in `places` which place is in which.
std::vector<Core> coresOf(const TextMaps &maps, Places &places)
{
    const Strip mask =
        maskOf(places.width, places.height, [&](int x, int y) { return maps.core.row(y)[x] >= leastCore; });
    std::vector<Core> cores = labelled(mask, maps, places);
    if (std::ranges::any_of(cores, &Core::mayBeRows)) {
        cutRows(mask, cores, maps.core, places);
        cores = labelled(mask, maps, places);
    }
    for (std::size_t i = 0; i < places.lines.size(); ++i) {
        if (places.lines[i] > 0 && cores[std::size_t(places.lines[i] - 1)].isSure())
            places.distances[i] = 0;
        else
            places.lines[i] = 0;
    }
    return cores;
}

/// Gives the places around the cores to the nearest.
void spread(Places &places)
{
    const auto take = [&](int x, int y, int fromX, int fromY, int step) {
        if (fromX < 0 || fromX >= places.width || fromY < 0 || fromY >= places.height)
            return;
        const std::size_t to = places.at(x, y);
        const std::size_t from = places.at(fromX, fromY);
        if (places.distances[from] + step < places.distances[to]) {
            places.distances[to] = places.distances[from] + step;
            places.lines[to] = places.lines[from];
        }
    };
    for (int y = 0; y < places.height; ++y) {
        for (int x = 0; x < places.width; ++x) {
            take(x, y, x - 1, y, 3);
            take(x, y, x, y - 1, 3);
            take(x, y, x - 1, y - 1, 4);
            take(x, y, x + 1, y - 1, 4);
        }
    }
    for (int y = places.height - 1; y >= 0; --y) {
        for (int x = places.width - 1; x >= 0; --x) {
            take(x, y, x + 1, y, 3);
            take(x, y, x, y + 1, 3);
            take(x, y, x + 1, y + 1, 4);
            take(x, y, x - 1, y + 1, 4);
        }
    }
}

/// What is inked of a line.
struct Ink
{
    QRect box;
    int area = 0; // pixels
    int sum = 0;  // of how sure the net is of each
};

std::vector<Ink> inksOf(const TextMaps &maps, const Places &places, std::size_t count)
{
    std::vector<Ink> inks(count);
    for (int y = 0; y < maps.ink.height; ++y) {
        const std::uint8_t *row = maps.ink.row(y);
        for (int x = 0; x < maps.ink.width; ++x) {
            const int line = row[x] < leastInk ? 0 : places.lines[places.at(x / 2, y / 2)];
            if (line == 0)
                continue;
            Ink &ink = inks[std::size_t(line - 1)];
            ink.box |= QRect(x, y, 1, 1);
            ink.area += 1;
            ink.sum += row[x];
        }
    }
    return inks;
}

/// Whether a box may be that of one character, which is hardly a line of its own beside others.
bool isLone(const QRect &box)
{
    return 10 * box.width() <= 13 * box.height();
}

/// Joins lines whose letters nearly touch, if they are large or one of them is a lone character: there the net may end
/// a line, as at a character of one stroke. Other neighbours that are as near are cells or labels. Returns whether
/// there are any.
bool joinTouching(std::vector<Core> &cores, const std::vector<Ink> &inks, Places &places)
{
    constexpr int large = 22;          // pixels high
    constexpr double apart = 0.6;      // of the lower one's height
    constexpr double besideLone = 0.5; // of the higher one's
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < inks.size(); ++i) {
        if (inks[i].area > 0)
            order.push_back(i);
    }
    std::ranges::sort(order, {}, [&](std::size_t i) { return inks[i].box.left(); });
    std::vector<int> joined(inks.size() + 1);
    std::iota(joined.begin(), joined.end(), 0);
    bool areAny = false;
    for (std::size_t a = 0; a < order.size(); ++a) {
        const QRect &left = inks[order[a]].box;
        for (std::size_t b = a + 1; b < order.size() && inks[order[b]].box.left() <= left.right() + left.height();
             ++b) {
            const QRect &right = inks[order[b]].box;
            const int shared = std::min(left.bottom(), right.bottom()) - std::max(left.top(), right.top()) + 1;
            const int lower = std::min(left.height(), right.height());
            const int higher = std::max(left.height(), right.height());
            const int gap = right.left() - left.right() - 1;
            const bool areLarge = lower >= large && 4 * lower >= 3 * higher && gap <= apart * lower;
            const bool hasLone =
                (isLone(left) || isLone(right)) && 5 * lower >= 2 * higher && gap <= besideLone * higher;
            if (4 * shared < 3 * lower || !(areLarge || hasLone))
                continue;
            const int into = joined[order[a] + 1];
            joined[order[b] + 1] = into;
            Core &core = cores[std::size_t(into - 1)];
            core.box |= cores[order[b]].box;
            core.thickness = std::max(core.thickness, cores[order[b]].thickness);
            areAny = true;
        }
    }
    for (int &line : places.lines)
        line = joined[std::size_t(line)];
    return areAny;
}

/// The letters of a line, and parts of them: what hangs together of its ink.
std::vector<QRect> shapesOf(const TextMaps &maps, const Places &places, const QRect &ink, int line)
{
    const Strip letters = maskOf(ink.width(), ink.height(), [&](int x, int y) {
        const QPoint at = ink.topLeft() + QPoint(x, y);
        return maps.ink.row(at.y())[at.x()] >= leastInk && places.lines[places.at(at.x() / 2, at.y() / 2)] == line;
    });
    BOXA *boxes = pixConnCompBB(letters.get(), 8);
    std::vector<QRect> shapes;
    for (int i = 0; i < boxaGetCount(boxes); ++i) {
        l_int32 x = 0;
        l_int32 y = 0;
        l_int32 width = 0;
        l_int32 height = 0;
        boxaGetBoxGeometry(boxes, i, &x, &y, &width, &height);
        shapes.push_back(QRect(x, y, width, height).translated(ink.topLeft()));
    }
    boxaDestroy(&boxes);
    return shapes;
}

/// The ink of a line of flat characters, such as a lone ideograph for one, as high as other characters are.
QRect heightened(const QRect &ink, const Core &core)
{
    const int half = int(2 * core.thickness); // the core is half as high as the line and measured at half size
    const int middle = core.box.top() + core.box.bottom() + 1;
    return ink | QRect(QPoint(ink.left(), middle - half), QPoint(ink.right(), middle + half - 1));
}

/// How sure the net is of each script in some columns of a core. At each place only the surest counts.
ScriptShares scriptsIn(const TextMaps &maps, const QRect &core, int left, int right)
{
    ScriptShares sums{};
    for (int y = core.top() / 4; y <= std::min(core.bottom() / 4, maps.scripts[0].height - 1); ++y) {
        for (int x = left / 8; x <= std::min(right / 8, maps.scripts[0].width - 1); ++x) {
            const auto at = [&](const SureMap &script) { return script.row(y)[x]; };
            const auto surest = std::ranges::max_element(maps.scripts, {}, at);
            sums[std::size_t(surest - maps.scripts.begin())] += at(*surest);
        }
    }
    return sums;
}

bool isLatin(const ScriptShares &scripts)
{
    return scripts[TextMaps::Latin] >
           scripts[TextMaps::Ideographs] + scripts[TextMaps::Kana] + scripts[TextMaps::Hangul];
}

/// Columns of a line, from its first letter to before its end.
struct Stretch
{
    int left;
    int right;
    bool isLatin;
};

/// The line's letters from the left to the right, neighbours in one kind of script together. Few letters among others
/// stay with them: who reads those reads them as well.
std::vector<Stretch> stretchesOf(const TextMaps &maps, const QRect &core, std::vector<QRect> shapes, int height)
{
    std::ranges::sort(shapes, {}, &QRect::left);
    std::vector<Stretch> letters;
    for (const QRect &shape : shapes) {
        if (!letters.empty() && shape.left() <= letters.back().right + 1)
            letters.back().right = std::max(letters.back().right, shape.right());
        else
            letters.push_back({shape.left(), shape.right(), false});
    }
    for (Stretch &letter : letters)
        letter.isLatin = isLatin(scriptsIn(maps, core, letter.left, letter.right));
    const auto joined = [](const std::vector<Stretch> &parts) {
        std::vector<Stretch> whole;
        for (const Stretch &part : parts) {
            if (!whole.empty() && whole.back().isLatin == part.isLatin)
                whole.back().right = part.right;
            else
                whole.push_back(part);
        }
        return whole;
    };
    std::vector<Stretch> stretches = joined(letters);
    for (const bool ofLatin : {false, true}) {
        for (Stretch &stretch : stretches) {
            const double least = (ofLatin ? leastLatin : leastWide) * height;
            if (stretches.size() > 1 && stretch.isLatin == ofLatin && stretch.right - stretch.left + 1 < least)
                stretch.isLatin = !ofLatin;
        }
        stretches = joined(stretches);
    }
    return stretches;
}

/// Tells the scripts of a line's pieces, and where they could be cut because Latin letters meet others.
void tellScripts(const TextMaps &maps, const QRect &core, const std::vector<QRect> &shapes, FoundLine &line)
{
    ScriptShares whole = scriptsIn(maps, core, 2 * core.left(), 2 * core.right());
    if (*std::ranges::max_element(whole) == 0)
        return;
    for (LinePiece &piece : line.pieces)
        piece.scripts = scriptsIn(maps, core, piece.ink.left(), piece.ink.right());
    const std::vector<Stretch> stretches = stretchesOf(maps, core, shapes, line.ink.height());
    if (stretches.size() < 2)
        return;
    whole[TextMaps::Latin] = 0; // which has stretches of its own
    for (const LinePiece &piece : line.pieces) {
        const qsizetype first = line.stretches.size();
        for (const Stretch &stretch : stretches) {
            const QRect part =
                piece.ink & QRect(QPoint(stretch.left, piece.ink.top()), QPoint(stretch.right, piece.ink.bottom()));
            if (part.isEmpty())
                continue;
            if (line.stretches.size() > first &&
                part.left() - line.stretches.last().ink.right() > spaceWidth * line.ink.height())
                line.stretches.last().joint = QStringLiteral(" ");
            line.stretches.append({part, {}, stretch.isLatin ? ScriptShares{1, 0, 0, 0} : whole});
        }
        if (line.stretches.size() > first)
            line.stretches.last().joint = piece.joint;
    }
}

} // namespace

QList<FoundLine> linesOf(const TextMaps &maps, int minimumHeight)
{
    const std::size_t count = maps.core.values.size();
    Places places{maps.core.width, maps.core.height, std::vector<int>(count, 0), std::vector<int>(count, 1 << 20)};
    std::vector<Core> cores = coresOf(maps, places);
    spread(places);
    for (std::size_t i = 0; i < count; ++i) {
        if (places.lines[i] > 0 &&
            places.distances[i] > 3 * (reach * cores[std::size_t(places.lines[i] - 1)].thickness + 1))
            places.lines[i] = 0;
    }
    std::vector<Ink> inks = inksOf(maps, places, cores.size());
    if (joinTouching(cores, inks, places))
        inks = inksOf(maps, places, cores.size());
    QList<FoundLine> lines;
    for (std::size_t i = 0; i < cores.size(); ++i) {
        if (inks[i].box.isNull())
            continue;
        const std::vector<QRect> shapes = shapesOf(maps, places, inks[i].box, int(i) + 1);
        QRect ink = inks[i].box;
        if (ink.height() < flat * cores[i].thickness)
            ink = heightened(ink, cores[i]) & QRect(0, 0, maps.ink.width, maps.ink.height);
        if (ink.height() < minimumHeight)
            continue;
        FoundLine line;
        line.ink = ink;
        line.sureness = double(inks[i].sum) / (255.0 * inks[i].area);
        line.shapeCount = int(shapes.size());
        line.pieces = piecesOf(shapes, ink);
        const QRect core = cores[i].box;
        tellScripts(maps, QRect(ink.left() / 2, core.top(), (ink.width() + 1) / 2, core.height()), shapes, line);
        lines.append(line);
    }
    return lines;
}

} // namespace lucentra

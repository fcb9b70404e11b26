#include "find/TextColumns.h"

#include "find/TextMaps.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <optional>
#include <vector>

namespace lucentra {
namespace {

// Ems unless stated otherwise; a column's em is its width.

// What single characters of a column look like on the upright image.
constexpr double widestCharacter = 1.6; // widths by heights
constexpr double narrowestCharacter = 0.75;
constexpr double sameCentre = 0.3;
constexpr double sameWidth = 1.6; // ratio
constexpr double touching = 0.4;
constexpr double oneMissing = 1.4;
constexpr double enoughPairs = 2;
constexpr double muchOfAll = 0.3; // by area
constexpr qsizetype fewest = 3;

constexpr double leastLength = 2.6; // of a column that others gather around
constexpr double leastGroup = 3;    // characters
constexpr double sameColumn = 0.4;
constexpr double gapInColumn = 0.85; // behind a full stop
constexpr double largestGap = 2.2;   // in a column of a group
constexpr double oneSize = 1.35;     // ratio
constexpr double narrowest = 0.3;    // of a narrow character
constexpr double betweenColumns = 2.5;
constexpr double lead = 1;        // how much longer a column must be than the lines that cross it, in line heights
constexpr double clearLead = 2.5; // likewise; certain without a reading
constexpr double leastHeightOfCharacter = 0.6;
constexpr double inkOfEm = 0.93;

// Empty ems between the ink of what stands side by side or below one another.
constexpr double tight = 0.3;  // between characters of a column
constexpr double looser = 0.2; // between columns than in them, or the other way round; else it tells nothing

int areaOf(const QRect &rect)
{
    return rect.isEmpty() ? 0 : rect.width() * rect.height();
}

/// How sure the net is that a line is of ideographs or kana rather than letters.
bool isWide(const FoundLine &line)
{
    double latin = 0;
    double wide = 0;
    for (const LinePiece &piece : line.pieces) {
        latin += piece.scripts[TextMaps::Latin] + piece.scripts[TextMaps::Hangul];
        wide += piece.scripts[TextMaps::Ideographs] + piece.scripts[TextMaps::Kana];
    }
    return wide > latin;
}

double charactersIn(const QRect &turned)
{
    return double(turned.width()) / turned.height();
}

/// Puts what was found in pieces together.
QList<QRect> wholeColumns(QList<QRect> pieces)
{
    std::ranges::sort(pieces, {}, &QRect::left);
    QList<QRect> columns;
    for (const QRect &piece : std::as_const(pieces)) {
        const auto before = std::ranges::find_if(columns, [&](const QRect &column) {
            const double em = std::max(column.height(), piece.height());
            const int apart = piece.left() - column.right() - 1;
            // Which is at the side of its square.
            const bool isMark = 2 * std::max(piece.height(), piece.width()) < column.height();
            const double tolerance = isMark ? 0.5 * em : sameColumn * em;
            return apart <= gapInColumn * em && apart > -0.5 * em &&
                   std::abs(piece.center().y() - column.center().y()) <= tolerance &&
                   (isMark || em <= oneSize * std::min(column.height(), piece.height()));
        });
        if (before == columns.end())
            columns.append(piece);
        else
            *before |= piece;
    }
    return columns;
}

bool areNeighbours(const QRect &a, const QRect &b)
{
    const double em = std::max(a.height(), b.height());
    const int shared = std::min(a.right(), b.right()) - std::max(a.left(), b.left());
    const double apart = std::abs(a.center().y() - b.center().y());
    return em <= oneSize * std::min(a.height(), b.height()) && shared > 0.4 * em && apart <= betweenColumns * em;
}

QList<QList<QRect>> groupsOf(const QList<QRect> &columns)
{
    std::vector<qsizetype> group(std::size_t(columns.size()));
    std::iota(group.begin(), group.end(), 0);
    for (qsizetype i = 0; i < columns.size(); ++i) {
        for (qsizetype k = 0; k < i; ++k) {
            const qsizetype from = group[std::size_t(i)];
            const qsizetype to = group[std::size_t(k)];
            if (from != to && areNeighbours(columns[i], columns[k]))
                std::ranges::replace(group, from, to);
        }
    }
    QList<QList<QRect>> groups;
    for (qsizetype number = 0; number < columns.size(); ++number) {
        QList<QRect> members;
        for (qsizetype i = 0; i < columns.size(); ++i) {
            if (group[std::size_t(i)] == number)
                members.append(columns[i]);
        }
        if (!members.isEmpty())
            groups.append(members);
    }
    return groups;
}

int sharedArea(const QRect &place, const ColumnGroup &group)
{
    int shared = 0;
    for (const TextColumn &column : group.columns)
        shared += areaOf(place & column.ink.adjusted(-column.em / 8, -column.em / 8, column.em / 8, column.em / 8));
    return shared;
}

/// What was found of columns on the upright image.
struct Across
{
    double length = 1; ///< heights
    double height = 0; ///< pixels
};

/// The means over the lines that cross a group's columns, by the area that they share with these.
Across acrossOf(const ColumnGroup &group, const QList<FoundLine> &upright, int width)
{
    double length = 0;
    double height = 0;
    double weight = 0;
    for (const FoundLine &line : upright) {
        const double shared = sharedArea(turnedRect(line.ink, width), group);
        length += shared * line.ink.width() / line.ink.height();
        height += shared * line.ink.height();
        weight += shared;
    }
    if (weight == 0)
        return {.length = 1, .height = std::numeric_limits<double>::infinity()};
    return {.length = std::max(1.0, length / weight), .height = height / weight};
}

/// The space between each row and the next one beneath it, in heights of the row. Rows are from the left to the right
/// on the turned image.
std::vector<double> spacesBetween(const QList<QRect> &rows)
{
    std::vector<double> spaces;
    for (const QRect &row : rows) {
        int nearest = std::numeric_limits<int>::max();
        for (const QRect &other : rows) {
            if (other.left() > row.center().x() && other.top() <= row.bottom() && row.top() <= other.bottom())
                nearest = std::min(nearest, other.left() - row.right() - 1);
        }
        if (nearest < std::numeric_limits<int>::max())
            spaces.push_back(double(nearest) / row.width());
    }
    return spaces;
}

double medianOf(std::vector<double> values)
{
    const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

/// How much farther apart the columns stand than the characters in them, which on the upright image are the rows across
/// the columns: text is looser between its lines than within them. Nothing where there are too few of either.
std::optional<double> loosenessOf(const ColumnGroup &group, const QList<FoundLine> &upright, int width)
{
    std::vector<double> between;
    for (qsizetype i = 1; i < group.columns.size(); ++i)
        between.push_back(double(group.columns[i].ink.top() - group.columns[i - 1].ink.bottom() - 1) /
                          group.columns[i].em);
    QList<QRect> rows;
    for (const FoundLine &line : upright) {
        const QRect place = turnedRect(line.ink, width);
        if (isWithin(place, group))
            rows.append(place);
    }
    const std::vector<double> within = spacesBetween(rows);
    if (between.empty() || within.size() < 2)
        return {};
    return medianOf(between) - medianOf(within);
}

int emOf(const QList<QRect> &inks)
{
    std::vector<double> widths;
    for (const QRect &ink : inks)
        widths.push_back(ink.height());
    return int(std::lround(medianOf(widths) / inkOfEm));
}

/// Puts columns into their order. Pieces of one column, between which a character wasn't found, become one.
ColumnGroup groupOf(QList<QRect> inks, int em)
{
    std::ranges::sort(inks, {}, &QRect::left);
    QList<QRect> columns;
    for (const QRect &ink : std::as_const(inks)) {
        const auto before = std::ranges::find_if(columns, [&](const QRect &column) {
            return std::abs(ink.center().y() - column.center().y()) <= sameColumn * em &&
                   ink.left() - column.right() <= largestGap * em;
        });
        if (before == columns.end())
            columns.append(ink);
        else
            *before |= ink;
    }
    std::ranges::sort(columns, {}, [](const QRect &column) { return column.center().y(); });
    ColumnGroup group;
    for (const QRect &column : std::as_const(columns))
        group.columns.append({column, em});
    return group;
}

/// Adds what belongs to a group although its size or place didn't show it: a last column of 了！ alone, what follows a
/// gap in a column.
void addMissing(ColumnGroup &group, const QList<QRect> &pieces, const QList<FoundLine> &upright, int width)
{
    const int em = group.columns.first().em;
    QList<QRect> inks;
    for (const TextColumn &column : std::as_const(group.columns))
        inks.append(column.ink);
    for (const QRect &piece : pieces) {
        const bool continues = std::ranges::any_of(std::as_const(group.columns), [&](const TextColumn &column) {
            const QRect &ink = column.ink;
            const int shared = std::min(ink.right(), piece.right()) - std::max(ink.left(), piece.left());
            const double apart = std::abs(ink.center().y() - piece.center().y());
            return apart <= sameColumn * em
                       ? -shared <= largestGap * em
                       : piece.width() <= leastLength * em && shared > 0.4 * em && apart <= betweenColumns * em;
        });
        const bool isOneSize = piece.height() >= narrowest * em && piece.height() <= em;
        if (continues && isOneSize && !isWithin(piece, group) &&
            acrossOf({{{piece, em}}, false}, upright, width).length < leastLength)
            inks.append(piece);
    }
    group.columns = groupOf(inks, em).columns;
    for (TextColumn &column : group.columns) {
        const int missing = int(inkOfEm * em) - column.ink.height();
        if (missing > 0)
            column.ink.adjust(0, -missing / 2, 0, missing - missing / 2);
    }
}

/// Whether there are three lines of ideographs or kana with hardly any space between them.
bool areTightRows(const QList<FoundLine> &upright)
{
    QList<QRect> rows;
    for (const FoundLine &line : upright) {
        if (isWide(line))
            rows.append(turnedRect(line.ink, 0));
    }
    return std::ranges::count_if(spacesBetween(rows), [](double space) { return space <= tight; }) >= 2;
}

/// Whether single characters stand below one another.
bool areCharactersSeen(const QList<FoundLine> &upright)
{
    QList<const FoundLine *> characters;
    qsizetype ideographs = 0;
    double area = 0;
    double areaOfShort = 0;
    for (const FoundLine &line : upright) {
        area += areaOf(line.ink);
        if (line.ink.width() > widestCharacter * line.ink.height())
            continue;
        areaOfShort += areaOf(line.ink);
        ideographs += isWide(line) ? 1 : 0;
        if (isWide(line) || line.ink.width() >= narrowestCharacter * line.ink.height())
            characters.append(&line);
    }
    // Short columns are sometimes found as parts of characters, few of which are below one another.
    if (ideographs >= fewest && areaOfShort > muchOfAll * area)
        return true;
    std::ranges::sort(characters, {}, [](const FoundLine *line) { return line->ink.top(); });
    double pairs = 0;
    for (auto first = characters.begin(); first != characters.end(); ++first) {
        const QRect &upper = (*first)->ink;
        for (auto second = first + 1; second != characters.end(); ++second) {
            const QRect &lower = (*second)->ink;
            const double em = std::max(upper.width(), lower.width());
            const double apart = lower.top() - upper.bottom() - 1;
            if (apart > oneMissing * em)
                break;
            if (apart < -0.3 * em || em > sameWidth * std::min(upper.width(), lower.width()) ||
                std::abs(upper.center().x() - lower.center().x()) > sameCentre * em)
                continue;
            if (apart <= touching * em)
                pairs += 1;
            else if (isWide(**first) && isWide(**second))
                pairs += 0.5;
            break;
        }
    }
    return pairs >= enoughPairs;
}

} // namespace

QRect ColumnGroup::area() const
{
    QRect area;
    for (const TextColumn &column : columns)
        area |= column.ink;
    return area;
}

QRect uprightRect(const QRect &turned, int width)
{
    return {width - turned.top() - turned.height(), turned.left(), turned.height(), turned.width()};
}

QRect turnedRect(const QRect &upright, int width)
{
    return {upright.top(), width - upright.left() - upright.width(), upright.height(), upright.width()};
}

void addUprightInk(SureMap &turned, const SureMap &upright)
{
    for (int y = 0; y < turned.height; ++y) {
        std::uint8_t *row = turned.row(y);
        for (int x = 0; x < turned.width; ++x)
            row[x] = std::max(row[x], upright.row(x)[upright.width - 1 - y]);
    }
}

bool isWithin(const QRect &place, const ColumnGroup &group)
{
    return 3 * sharedArea(place, group) > areaOf(place);
}

bool mayBeColumns(const QList<FoundLine> &upright)
{
    return areCharactersSeen(upright) || areTightRows(upright);
}

QList<ColumnGroup> columnsOf(const QList<FoundLine> &turned, const QList<FoundLine> &upright, int width)
{
    QList<QRect> pieces;
    for (const FoundLine &line : turned)
        pieces.append(line.ink);
    QList<ColumnGroup> groups;
    const bool areSeen = areCharactersSeen(upright);
    const QList<QRect> whole = wholeColumns(pieces);
    QList<QRect> others = whole;
    for (const FoundLine &line : upright) {
        const QRect place = turnedRect(line.ink, width);
        if (line.ink.width() <= widestCharacter * line.ink.height() &&
            std::ranges::none_of(whole, [&](const QRect &column) { return column.intersects(place); }))
            others.append(place);
    }
    QList<QList<QRect>> candidates = groupsOf(whole);
    std::ranges::stable_sort(candidates, std::greater(), [](const QList<QRect> &columns) {
        return std::accumulate(columns.begin(), columns.end(), 0,
                               [](int sum, const QRect &c) { return sum + c.width(); });
    });
    for (const QList<QRect> &columns : std::as_const(candidates)) {
        ColumnGroup group = groupOf(columns, emOf(columns));
        if (std::ranges::any_of(groups, [&](const ColumnGroup &g) { return isWithin(columns.first(), g); }))
            continue;
        double along = 0;
        double weight = 0;
        bool isLong = false;
        for (const QRect &piece : std::as_const(pieces)) {
            const double shared = sharedArea(piece, group);
            along += shared * charactersIn(piece);
            weight += shared;
            isLong = isLong || (isWithin(piece, group) && charactersIn(piece) >= leastLength);
        }
        const Across across = acrossOf(group, upright, width);
        const double difference = along / std::max(1.0, weight) / across.length;
        double characters = 0;
        for (const TextColumn &column : group.columns)
            characters += std::max(1.0, charactersIn(column.ink));
        const bool isClear = difference >= clearLead && characters >= 2 * leastGroup;
        const bool areCharacters = across.height >= leastHeightOfCharacter * group.columns.first().em;
        group.isSure = isClear && areCharacters;
        const std::optional<double> looseness = loosenessOf(group, upright, width);
        const bool isVertical =
            std::abs(looseness.value_or(0)) >= looser ? *looseness > 0 : isClear || (areSeen && difference >= lead);
        if (isLong && characters >= leastGroup && isVertical && (isClear || areCharacters)) {
            addMissing(group, others, upright, width);
            groups.append(group);
        }
    }
    return groups;
}

} // namespace lucentra

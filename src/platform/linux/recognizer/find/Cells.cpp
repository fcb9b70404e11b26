#include "find/Cells.h"

#include "Rules.h"

#include <algorithm>
#include <cstdlib>

namespace lucentra {
namespace {

// Heights of the lower one of the words beside a gap.
constexpr double leastGap = 0.75;   // spaces between words are narrower: 0.64 in the widest common fonts
constexpr double leastCommon = 0.5; // what the rows' gaps have in common
constexpr double farthestRow = 3.5; // between the middles of rows

constexpr int leastRows = 5; // spaces of a text are above one another in three or four now and then

/// Free of letters, from where those before it end to where those after it begin.
struct Gap
{
    int end;
    int begin;

    int width() const { return begin - end - 1; }
    int middle() const { return (end + begin) / 2; }
};

/// What stands at one height.
struct TableRow
{
    QRect box;
    std::vector<Gap> gaps; // from the left to the right
};

QRect boxOf(const std::vector<QRect> &letters)
{
    QRect box;
    for (const QRect &letter : letters)
        box |= letter;
    return box;
}

/// The gaps between letters.
std::vector<Gap> gapsOf(std::vector<QRect> letters)
{
    std::ranges::sort(letters, {}, &QRect::left);
    std::vector<Gap> gaps;
    int end = letters.front().right();
    for (const QRect &letter : letters) {
        const Gap gap{end, letter.left()};
        if (gap.width() > 0)
            gaps.push_back(gap);
        end = std::max(end, letter.right());
    }
    return gaps;
}

/// The rows from the top to the bottom, and which row each line is in.
std::vector<TableRow> tableRowsOf(const std::vector<LineLetters> &lines, std::vector<std::size_t> &rowOf)
{
    std::vector<std::pair<QRect, std::size_t>> boxes;
    for (std::size_t i = 0; i < lines.size(); ++i)
        boxes.push_back({boxOf(lines[i].letters), i});
    std::ranges::sort(boxes, {}, [](const auto &box) { return box.first.center().y(); });
    std::vector<std::vector<QRect>> letters;
    std::vector<TableRow> rows;
    QRect first;
    for (const auto &[box, line] : boxes) {
        if (rows.empty() || 2 * (box.center().y() - first.center().y()) > std::min(box.height(), first.height())) {
            rows.push_back({});
            letters.push_back({});
            first = box;
        }
        rows.back().box |= box;
        std::ranges::copy(lines[line].letters, std::back_inserter(letters.back()));
        rowOf[line] = rows.size() - 1;
    }
    for (std::size_t i = 0; i < rows.size(); ++i)
        rows[i].gaps = gapsOf(letters[i]);
    return rows;
}

/// The height of the lower one of the words before and behind a gap.
int heightBeside(const Gap &gap, const std::vector<QRect> &letters)
{
    const int reach = 4 * gap.width();
    QRect before;
    QRect behind;
    for (const QRect &letter : letters) {
        if (letter.right() <= gap.end && letter.right() > gap.end - reach)
            before |= letter;
        else if (letter.left() >= gap.begin && letter.left() < gap.begin + reach)
            behind |= letter;
    }
    return std::min(before.height(), behind.height());
}

/// Whether a gap of a row goes on through enough rows above and below, with what ends before it or what begins after it
/// aligned.
bool isBetweenCells(const Gap &own, int height, const std::vector<TableRow> &rows, std::size_t row)
{
    Gap common = own;
    int ends = 1;   // rows that end at one place before it
    int begins = 1; // rows that begin at one place after it
    for (const int step : {-1, 1}) {
        int last = rows[row].box.center().y();
        for (auto i = std::ptrdiff_t(row) + step; i >= 0 && i < std::ssize(rows); i += step) {
            const auto &[box, gaps] = rows[std::size_t(i)];
            if (std::abs(box.center().y() - last) > farthestRow * height)
                break;
            if (box.right() < common.middle() || box.left() > common.middle())
                continue; // it has nothing there
            const auto gap = std::ranges::lower_bound(gaps, common.middle() + 1, {}, &Gap::begin);
            if (gap == gaps.end())
                break;
            common = {std::max(gap->end, common.end), std::min(gap->begin, common.begin)};
            if (common.width() < leastCommon * height)
                break;
            ends += std::abs(gap->end - own.end) <= 1;
            begins += std::abs(gap->begin - own.begin) <= 1;
            if (std::max(ends, begins) >= leastRows)
                return true;
            last = box.center().y();
        }
    }
    return false;
}

} // namespace

std::vector<LineLetters> cutAtCells(const std::vector<LineLetters> &lines)
{
    std::vector<std::size_t> rowOf(lines.size());
    const std::vector<TableRow> rows = tableRowsOf(lines, rowOf);
    std::vector<LineLetters> parts;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        LineLetters rest = lines[i];
        for (const Gap &gap : gapsOf(rest.letters)) {
            const int height = heightBeside(gap, lines[i].letters);
            if (gap.width() < leastGap * height || !isOn("cells") || !isBetweenCells(gap, height, rows, rowOf[i]))
                continue;
            const auto after = std::partition(rest.letters.begin(), rest.letters.end(),
                                              [&](const QRect &letter) { return letter.left() < gap.begin; });
            parts.push_back({rest.core, {rest.letters.begin(), after}});
            rest.letters.erase(rest.letters.begin(), after);
        }
        parts.push_back(rest);
    }
    return parts;
}

} // namespace lucentra

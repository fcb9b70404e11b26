#include "judge/ReadingOrder.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>

namespace lucentra {
namespace {

using Row = QList<int>; // indices into the boxes, from left to right

constexpr qsizetype columnRows = 4; // of a text in columns, at least
constexpr int longLine = 6;         // heights; a sentence, not a cell

QList<Row> rowsOf(const QList<QRect> &boxes)
{
    QList<int> order(boxes.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&](int a, int b) { return boxes[a].center().y() < boxes[b].center().y(); });
    QList<Row> rows;
    auto begin = order.begin();
    while (begin != order.end()) {
        // A row is what overlaps its first line by half of the lower one's height.
        const QRect first = boxes[*begin];
        const auto end = std::find_if(begin + 1, order.end(), [&](int index) {
            const QRect &box = boxes[index];
            const int overlap = std::min(box.bottom(), first.bottom()) - std::max(box.top(), first.top()) + 1;
            return 2 * overlap < std::min(box.height(), first.height());
        });
        std::sort(begin, end, [&](int a, int b) { return boxes[a].left() < boxes[b].left(); });
        rows.append(Row(begin, end));
        begin = end;
    }
    return rows;
}

/// Whether a row goes on with the columns of the one above it.
bool continues(const Row &row, const Row &above, const QList<QRect> &boxes)
{
    return row.size() == above.size() && row.size() > 1 &&
           std::equal(row.begin(), row.end(), above.begin(),
                      [&](int a, int b) { return std::abs(boxes[a].left() - boxes[b].left()) <= boxes[a].height(); });
}

bool hasLongLines(const Row &row, const QList<QRect> &boxes)
{
    return std::all_of(row.begin(), row.end(),
                       [&](int index) { return boxes[index].width() >= longLine * boxes[index].height(); });
}

} // namespace

QList<int> readingOrder(const QList<QRect> &boxes)
{
    const QList<Row> rows = rowsOf(boxes);
    QList<int> order;
    for (qsizetype first = 0; first < rows.size();) {
        qsizetype end = first + 1;
        qsizetype longRows = hasLongLines(rows[first], boxes) ? 1 : 0;
        while (end < rows.size() && continues(rows[end], rows[end - 1], boxes))
            longRows += hasLongLines(rows[end++], boxes) ? 1 : 0;
        const bool areColumns = end - first >= columnRows && 2 * longRows > end - first;
        if (areColumns) {
            for (qsizetype column = 0; column < rows[first].size(); ++column) {
                for (qsizetype row = first; row < end; ++row)
                    order.append(rows[row][column]);
            }
        } else {
            end = first + 1;
            order.append(rows[first]);
        }
        first = end;
    }
    return order;
}

} // namespace lucentra

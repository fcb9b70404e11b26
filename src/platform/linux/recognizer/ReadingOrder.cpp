#include "ReadingOrder.h"

#include <algorithm>
#include <numeric>

namespace lucentra {

QList<int> readingOrder(const QList<QRect> &boxes)
{
    QList<int> order(boxes.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&](int a, int b) { return boxes[a].center().y() < boxes[b].center().y(); });
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
        begin = end;
    }
    return order;
}

} // namespace lucentra

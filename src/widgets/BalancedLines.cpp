#include "BalancedLines.h"

#include <QFontMetrics>

namespace lucentra {

QSize balancedSize(const QFontMetrics &metrics, const QSize &room, int flags, const QString &text)
{
    const auto sizeAt = [&](int width) { return metrics.boundingRect(0, 0, width, room.height(), flags, text).size(); };
    const int height = sizeAt(room.width()).height();
    int tooNarrow = 0;
    int width = room.width();
    while (width - tooNarrow > 1) {
        const int middle = (tooNarrow + width) / 2;
        const QSize size = sizeAt(middle);
        (size.height() > height || size.width() > middle ? tooNarrow : width) = middle;
    }
    return {width, height};
}

} // namespace lucentra

#include "WindowDrag.h"

#include <algorithm>

namespace lucentra {

QRect WindowDrag::frameFor(QPoint pointer, QSize smallest) const
{
    const QPoint travel = pointer - startPointer;
    if (!edges)
        return startFrame.translated(travel);
    int left = startFrame.x();
    int top = startFrame.y();
    int right = startFrame.x() + startFrame.width();
    int bottom = startFrame.y() + startFrame.height();
    if (edges & Qt::LeftEdge)
        left = std::min(left + travel.x(), right - smallest.width());
    if (edges & Qt::RightEdge)
        right = std::max(right + travel.x(), left + smallest.width());
    if (edges & Qt::TopEdge)
        top = std::min(top + travel.y(), bottom - smallest.height());
    if (edges & Qt::BottomEdge)
        bottom = std::max(bottom + travel.y(), top + smallest.height());
    return {left, top, right - left, bottom - top};
}

} // namespace lucentra

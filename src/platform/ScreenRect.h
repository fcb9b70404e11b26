#pragma once

#include <QRectF>

namespace lucentra {

/// A rectangle of the desktop in global points: origin top-left, y down, the main display's corner at its own place in
/// the desktop's arrangement. Rectangles of the pane (points from its corner) and of pictures (pixels) don't convert to
/// it.
struct ScreenRect : QRectF
{
    ScreenRect() = default;
    ScreenRect(double x, double y, double width, double height)
        : QRectF(x, y, width, height)
    {
    }
    ScreenRect(QPointF topLeft, QSizeF size)
        : QRectF(topLeft, size)
    {
    }
    explicit ScreenRect(const QRectF &rect)
        : QRectF(rect)
    {
    }
};

} // namespace lucentra

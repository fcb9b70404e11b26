#pragma once

#include <QColor>
#include <QImage>
#include <QSizeF>

#include <functional>

class QPainter;

namespace lucentra {

/// A shape's soft shadow.
struct SoftShadow
{
    QColor color;
    double radius = 0; ///< how far it spreads, points
    QPointF offset;    ///< points

    /// A picture of `size` points at `scale` pixels per point that holds the shadow and above it the shape, which
    /// `draw` paints in points.
    QImage under(const QSizeF &size, double scale, const std::function<void(QPainter &)> &draw) const;
};

} // namespace lucentra

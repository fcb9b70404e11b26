#pragma once

#include <QColor>
#include <QImage>
#include <QPointF>
#include <QSizeF>

#include <functional>

class QPainter;

namespace lucentra {

/// The soft shadow of a shape.
struct SoftShadow
{
    double opacity = 1;
    /// Standard deviation of the Gaussian that blurs the shape, in points. A shadow reaches about three
    /// deviations.
    double deviation = 0;
    QPointF offset; ///< points
    QColor color = Qt::black;

    /// A picture of `size` points at `scale` pixels per point with the shadow and the shape above it, which `draw`
    /// paints in points.
    QImage under(const QSizeF &size, double scale, const std::function<void(QPainter &)> &draw) const;
};

} // namespace lucentra

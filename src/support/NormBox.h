#pragma once

#include <QRectF>
#include <QSizeF>

namespace lucentra {

/// A place in a picture as fractions (0 to 1) of its width and height. The origin is the bottom-left corner and y points
/// upwards. All other rectangles have y downwards; only this type turns it.
struct NormBox
{
    double x = 0;
    double y = 0; ///< of the lower edge
    double width = 0;
    double height = 0;

    /// The box of a rectangle in a picture of that size, both in the same unit, y downwards.
    static NormBox of(const QRectF &rect, const QSizeF &size)
    {
        return {rect.x() / size.width(), 1 - rect.bottom() / size.height(), rect.width() / size.width(),
                rect.height() / size.height()};
    }
    /// The inverse of `of`.
    QRectF in(const QSizeF &size) const
    {
        return {x * size.width(), (1 - y - height) * size.height(), width * size.width(), height * size.height()};
    }
    /// In a picture of size 1 by 1, to compare places.
    QRectF unitRect() const { return in({1, 1}); }

    bool operator==(const NormBox &) const = default;
};

} // namespace lucentra

#pragma once

#include <QImage>
#include <QList>
#include <QRectF>

class QPainter;

namespace lucentra {

class FrostedBackdrop;

/// Where something is to be read on the glass. There it lets nothing sharp through, and is never too clear for white
/// text; its tone stays that of the glass around it.
struct CalmArea
{
    QRectF rect;         ///< points of the glass
    double strength = 1; ///< from 0, like the glass around it, to 1

    bool operator==(const CalmArea &) const = default;
};

/// How calm glass of that size is to be, in the alpha of its pixels: the areas and a little around them, softly ending.
QImage calmMask(const QSizeF &size, double pixelsPerPoint, const QList<CalmArea> &areas);

/// Light that falls on the glass from above.
void paintSheen(QPainter &painter, const QRectF &rect);

/// Draws calm glass over glass of that opacity (0 to 1), as far as the mask, of the rectangle's size, tells.
void paintCalmGlass(QPainter &painter, const FrostedBackdrop &frosted, const QRectF &rect, const QImage &mask,
                    double opacity);

} // namespace lucentra

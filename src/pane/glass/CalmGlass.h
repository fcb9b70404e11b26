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
    QRectF rect;           ///< points of the glass
    double strength = 1;   ///< from 0, like the glass around it, to 1
    double slopeAbove = 0; ///< over how many points a band across the glass ends; 0 for a rounded area
    double slopeBelow = 0;

    bool operator==(const CalmArea &) const = default;
};

/// Whether areas on glass of that opacity (0 to 1) are darker than the glass around them, so that their outlines are
/// seen.
bool areCalmAreasSeen(double glassOpacity);

/// How calm glass of that size is to be, in the alpha of its pixels: the areas and a little around them, softly ending.
/// With `joined`, lines beneath one another get one area, whose outline has no steps.
QImage calmMask(const QSizeF &size, double pixelsPerPoint, QList<CalmArea> areas, bool joined);

/// A band across the glass that covers `place` and the whole lines of the content's text there; between lines it ends
/// softly. The content is of the glass's size.
CalmArea calmBand(const QRectF &place, const QImage &content, const QSizeF &glass);

/// Light that falls on the glass from above.
void paintSheen(QPainter &painter, const QRectF &rect);

/// Draws calm glass over glass of that opacity (0 to 1), as far as the mask, of the rectangle's size, tells.
void paintCalmGlass(QPainter &painter, const FrostedBackdrop &frosted, const QRectF &rect, const QImage &mask,
                    double opacity);

} // namespace lucentra

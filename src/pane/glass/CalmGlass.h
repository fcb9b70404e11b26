#pragma once

#include <QImage>
#include <QList>
#include <QRectF>

class QPainter;

namespace lucentra {

class FrostedBackdrop;

/// An area of the glass with text on it. There the glass lets nothing sharp through and is dark enough for white text,
/// or light enough for dark text; its tone is that of the glass around it.
struct CalmArea
{
    QRectF rect;           ///< points of the glass
    double strength = 1;   ///< from 0 (like the glass around it) to 1
    double slopeAbove = 0; ///< the height of a band's soft upper end, in points; 0 for a rounded area
    double slopeBelow = 0;

    bool operator==(const CalmArea &) const = default;
};

/// Whether calm areas on glass of that opacity (0 to 1) are darker than the glass around them, so that their outlines
/// are visible.
bool areCalmAreasSeen(double glassOpacity);

/// Pixels per point of pictures that show nothing sharp; they are enlarged as they are painted.
constexpr double softScale = 0.5;

/// A mask of the calm areas on glass of that size, with soft edges and at the soft scale: alpha is the calmness of each
/// pixel. With `joined`, lines below each other share one area, so that its outline has no steps.
QImage calmMask(const QSizeF &size, QList<CalmArea> areas, bool joined);

/// A band across the glass that covers `place` and the whole lines of the content's text there; between lines it ends
/// softly. The content is of the glass's size.
CalmArea calmBand(const QRectF &place, const QImage &content, const QSizeF &glass);

/// Draws glass of that opacity (0 to 1), with light that falls on it from above.
void paintGlass(QPainter &painter, const FrostedBackdrop &frosted, const QRectF &rect, double opacity);

/// The part of the glass outside which the mask of these areas is empty.
QRectF calmBounds(const QList<CalmArea> &areas);

/// Draws calm glass over glass of that opacity (0 to 1), through the mask, which was made for the rectangle's size and is
/// empty outside `part`.
void paintCalmGlass(QPainter &painter, const FrostedBackdrop &frosted, const QRectF &rect, const QImage &mask,
                    const QRectF &part, double opacity);

} // namespace lucentra

#pragma once

#include "OverlayLayout.h"
#include "OverlayText.h"

#include <QImage>
#include <QRectF>

#include <memory>

class QPainter;

namespace lucentra {

/// Draws one overlay: bold, nearly white text with a soft black shadow, or nearly black text with a white one, on any
/// paint device at any scale. The picture is kept until the scale changes, so that repainting is cheap.
class OverlayPainter
{
public:
    /// `text` must be the one that the layout was made for, of the same typesetter.
    OverlayPainter(std::shared_ptr<OverlayText> text, const OverlayLayout &layout, GlassTone ground = GlassTone::Dark);

    const OverlayLayout &layout() const { return m_layout; }
    /// The area that painting may touch, in pane points. The shadow, and a line that doesn't fit into the frame, reach
    /// beyond the frame.
    QRectF paintedArea() const;
    /// The frame, without the room at the right end of a single line.
    QRectF textArea() const;

    /// Paints in pane points. The painter may be scaled and moved; under a rotation the text is only interpolated.
    void paint(QPainter &painter);

private:
    struct Picture
    {
        QImage image;
        double scale = 0;  ///< pixels per point
        QPointF remainder; ///< offset of the area's corner from the pixel grid, less than a pixel
    };

    Picture render(double scale, QPointF remainder) const;

    std::shared_ptr<OverlayText> m_text;
    OverlayLayout m_layout;
    GlassTone m_ground;
    Picture m_picture;
};

} // namespace lucentra

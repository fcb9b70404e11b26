#pragma once

#include "OverlayLayout.h"
#include "OverlayText.h"

#include <QImage>
#include <QRectF>

#include <memory>

class QPainter;

namespace lucentra {

/// Draws one overlay: bold, nearly white text with a soft black shadow, on any paint device at any scale. The picture
/// is made once a scale and kept, so that repainting is cheap. Main thread only.
class OverlayPainter
{
public:
    /// `text` must be the one that the layout was made for, of the same typesetter.
    OverlayPainter(std::shared_ptr<OverlayText> text, const OverlayLayout &layout);

    const QRectF &frame() const { return m_layout.frame; }
    /// What painting may touch, in pane points: the lines and their shadow, which reaches beyond the frame. So does a
    /// line for which the frame has no room.
    QRectF paintedArea() const;

    /// Paints in pane points. The painter may be scaled and moved; under a rotation the text is only interpolated.
    void paint(QPainter &painter);

private:
    struct Picture
    {
        QImage image;
        double scale = 0;  ///< pixels per point
        QPointF remainder; ///< the part of a pixel by which the area's corner lies off the grid
    };

    Picture render(double scale, QPointF remainder) const;

    const std::shared_ptr<OverlayText> m_text;
    const OverlayLayout m_layout;
    Picture m_picture;
};

} // namespace lucentra

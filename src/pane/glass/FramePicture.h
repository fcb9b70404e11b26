#pragma once

#include "NeonBorderStyle.h"

#include <QPixmap>
#include <QRectF>

class QPainter;

namespace lucentra {

/// A picture of a rounded frame for any size: its corners are drawn once, its edges by repeating a piece of them, which
/// is several times faster than stretching.
class FramePicture
{
public:
    /// How far the frame's corners, and everything that is drawn along its edges, reach inwards. Points.
    static constexpr int depth = 18;

    FramePicture() = default;
    /// The border's line, on the pane's rounded edge. `scale` is pixels per point.
    static FramePicture line(const NeonBorderStyle &style, double scale);
    /// The glow from the line inwards.
    static FramePicture glow(const NeonBorderStyle &style, double scale);

    void paint(QPainter &painter, const QRectF &rect, double opacity) const;

private:
    /// `strength` gives the opacity at a distance (points) inwards from the rounded edge; beyond `reach` it is 0.
    template <typename Strength>
    static FramePicture make(const QColor &color, double scale, double reach, Strength strength);
    void paintEdges(QPainter &painter, const QRectF &rect) const;

    QPixmap m_picture;
    double m_scale = 1; ///< pixels per point
    double m_reach = 0; ///< points
};

} // namespace lucentra

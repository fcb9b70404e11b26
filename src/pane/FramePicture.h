#pragma once

#include "NeonBorderStyle.h"

#include <QPixmap>
#include <QRectF>

class QPainter;

namespace lucentra {

/// A picture of a rounded frame that fits any size: its corners are drawn as they are, its edges are stretched.
class FramePicture
{
public:
    /// How far the frame's corners, and everything that is drawn along its edges, reach inwards. Points.
    static constexpr int depth = 22;

    FramePicture() = default;
    /// The border's line, on the pane's rounded edge. `scale` is pixels per point.
    static FramePicture line(const NeonBorderStyle &style, double scale);
    /// The light that the line throws inwards.
    static FramePicture glow(const NeonBorderStyle &style, double scale);

    void paint(QPainter &painter, const QRectF &rect, double opacity) const;

private:
    /// `strength` gives the opacity at a distance (points) inwards from the rounded edge.
    template <typename Strength>
    static FramePicture make(const QColor &color, double scale, Strength strength);

    QPixmap m_picture;
    double m_cornerPixels = 0;
};

} // namespace lucentra

#pragma once

#include <QRect>

#include <vector>

namespace lucentra {

/// The upright sides of frames and the upright rules of a picture: what stands on either side of one isn't one line.
class Walls
{
public:
    /// A wall at `x` from the row `top` to the row `bottom`, both included, in pixels of the image.
    void add(int x, int top, int bottom);

    /// Whether one stands in the gap between two boxes, whichever is on the left, and rises above and below them; what
    /// is as high as they are is an ideograph that looks like a frame.
    bool standBetween(const QRect &a, const QRect &b) const;

private:
    struct Wall
    {
        int x;
        int top;
        int bottom;
    };
    std::vector<std::vector<Wall>> m_bands; // by the rows that a wall touches, each sorted by x
};

} // namespace lucentra

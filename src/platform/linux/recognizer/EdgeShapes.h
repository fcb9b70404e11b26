#pragma once

#include "EdgeMap.h"
#include "Walls.h"

#include <QRect>

#include <vector>

namespace lucentra {

/// A connected outline: a letter, a stroke of one, a dot, or something that is no writing at all.
struct EdgeShape
{
    QRect ink; ///< pixels of the image that the outline encloses, itself included
    int edgePixels = 0;
    int strength = 0;      ///< mean strength of the outline, 0 to 255
    bool isHollow = false; ///< nearly all of it lies at the rim of its box
};

/// The box around them; null where there are none.
inline QRect inkOf(const std::vector<EdgeShape> &shapes)
{
    QRect ink;
    for (const EdgeShape &shape : shapes)
        ink |= shape.ink;
    return ink;
}

struct EdgeShapes
{
    std::vector<EdgeShape> shapes;
    Walls walls;
    bool areSmoothed = false; ///< the picture was, for its grain
};

/// The outlines of a map (8-connected) that can be letters or parts of letters.
///
/// Frames and rules go first, while their faint parts still hold them together; then what is faint beside something
/// strong. Where something large still hangs together, what is fainter than the letters near it is taken away, so that
/// they come free of the picture that they touch. At most `maximum` shapes are returned, the strongest; a picture with
/// more is noise. What stood upright in the frames and rules is returned as walls. Any thread.
EdgeShapes shapesIn(EdgeMap edges, std::size_t maximum = 60'000);

} // namespace lucentra

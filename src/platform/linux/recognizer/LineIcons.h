#pragma once

#include "EdgeShapes.h"

#include <QImage>

#include <vector>

namespace lucentra {

/// The shapes of a line without the icons at its ends: check boxes, radio buttons, bullets, the arrows of lists and
/// trees, small pictures before a label, a title bar's buttons. Empty where there is nothing else, also where it is
/// just an arrow or a patch. `shapes` come from the left to the right.
///
/// An icon stands apart from the text (a third of its height and more), is one figure rather than a word, and looks
/// like none of the letters: it is a tick, a filled triangle, three bars, a square of another colour, a patch of one
/// colour throughout or, farther off, a closed frame or ring as wide as high or much taller than the text. At a line's
/// end, where numbers and single letters stand too, only triangles and, still farther off, frames and what is far
/// taller count. Of what else is at least half as wide as the text is high, also where it stands only a sixth of the
/// height apart, `looksLikeIcon` takes what it is sure of. `image` has 32 bits a pixel. Any thread.
std::vector<EdgeShape> withoutIcons(const QImage &image, std::vector<EdgeShape> shapes);

/// The shapes of a picture without small squares of a colour of their own and the marks that fill them: check boxes.
std::vector<EdgeShape> withoutBoxes(const QImage &image, std::vector<EdgeShape> shapes);

} // namespace lucentra

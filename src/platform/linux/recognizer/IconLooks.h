#pragma once

#include "EdgeShapes.h"

#include <QImage>

#include <vector>

namespace lucentra {

/// Whether the first or last figure of a line looks like an icon rather than like a letter, beside the `text` that
/// remains without it. Both come from the left to the right and aren't empty; `paper` is the colour between them.
/// `image` has 32 bits a pixel. Any thread.
bool looksLikeIcon(const QImage &image, const std::vector<EdgeShape> &figure, const std::vector<EdgeShape> &text,
                   QRgb paper);

} // namespace lucentra

#pragma once

#include "EdgeShapes.h"

#include <QImage>

#include <vector>

namespace lucentra {

/// The shapes of bright letters with dark all around them, as subtitles and games draw them over pictures: connected
/// pixels that are bright, of a letter's size, and end in an outline, a shadow or a dark ground. Unlike an outline such
/// a shape doesn't hang together with the picture's edges that it touches. `image` has 32 bits a pixel. Any thread.
std::vector<EdgeShape> brightLettersIn(const QImage &image);

} // namespace lucentra

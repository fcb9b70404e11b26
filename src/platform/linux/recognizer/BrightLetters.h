#pragma once

#include "EdgeShapes.h"

#include <QImage>

#include <vector>

namespace lucentra {

/// How bright a colour is, 0 to 255.
inline int levelOf(QRgb colour)
{
    return (77 * qRed(colour) + 151 * qGreen(colour) + 28 * qBlue(colour)) >> 8; // Rec. 601, in 256ths
}

/// White and yellow letters, their soft edges too, are as bright as that.
constexpr int brightLevel = 185;

/// The shapes of bright letters with dark all around them, as subtitles and games draw them over pictures: connected
/// pixels that are bright, of a letter's size, and end in an outline, a shadow or a dark ground. Unlike an outline such
/// a shape doesn't hang together with the picture's edges that it touches. The brighter the letter, the stronger the
/// shape. None where there are more than 8000, or millions of bright runs: that is noise. `image` has 32 bits a pixel.
/// Any thread.
std::vector<EdgeShape> brightLettersIn(const QImage &image);

} // namespace lucentra

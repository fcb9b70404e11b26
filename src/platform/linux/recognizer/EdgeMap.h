#pragma once

#include <QImage>

#include <cstdint>
#include <vector>

namespace lucentra {

/// Where an image changes sharply: the outlines of everything that could be a letter.
///
/// A pixel's strength is the Roberts gradient (the larger difference of the two diagonals of its 2×2 pixels), taken as
/// the maximum over red, green and blue, so that red on green of one brightness has edges too. Strengths below the
/// local threshold are zero. The threshold follows the picture's texture: flat window backgrounds show faint grey
/// letters (from 26), a grainy video only what rises above its grain.
struct EdgeMap
{
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> strength; ///< row by row; (x, y) is the step between the pixels x and x + 1, y and y + 1
    bool isSmoothed = false;            ///< for its grain; the steps of thin strokes are lower then

    std::uint8_t *row(int y) { return strength.data() + std::size_t(y) * std::size_t(width); }
    const std::uint8_t *row(int y) const { return strength.data() + std::size_t(y) * std::size_t(width); }
};

/// The edges of an image with 32 bits a pixel. Any thread.
EdgeMap edgesOf(const QImage &image);

/// Takes away what is faint beside something strong (less than `share` of the strongest edge within some 12 pixels):
/// the shadow of a letter, the noise of compression around it, the hill that it stands on.
void dropOvershadowed(EdgeMap &edges, double share);

} // namespace lucentra

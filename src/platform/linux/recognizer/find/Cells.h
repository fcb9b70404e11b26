#pragma once

#include <QRect>

#include <vector>

namespace lucentra {

struct LineLetters
{
    std::size_t core;           ///< of the line, as it was found
    std::vector<QRect> letters; ///< at least one; pixels of the image
};

/// Cuts lines where columns of a table are apart: at gaps that go on through several rows, with what is before them or
/// behind them aligned.
std::vector<LineLetters> cutAtCells(const std::vector<LineLetters> &lines);

} // namespace lucentra

#pragma once

#include "strip/LineNormalizer.h"

#include <cstdint>
#include <vector>

namespace lucentra {

/// The darkest grey of each column. In an empty one nothing is darker than `lightestInk`.
std::vector<std::uint8_t> darkestOfColumns(const Strip &strip);
constexpr std::uint8_t lightestInk = 0xC0;

/// A place to cut a strip at, between two columns. Columns are pixels of the strip.
struct Cut
{
    int x = 0;
    int gap = 0; ///< empty columns around it
};

/// The middle of the widest gap from `from` to before `to`, or the lightest column if there is no gap. `darkest` is the
/// strip's (see `darkestOfColumns`).
Cut bestCut(const std::vector<std::uint8_t> &darkest, int from, int to);

/// The columns from `left` to before `right`, with paper beside them.
Strip pieceOf(Pix *strip, int left, int right);

} // namespace lucentra

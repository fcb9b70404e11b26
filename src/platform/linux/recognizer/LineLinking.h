#pragma once

#include "EdgeShapes.h"

#include <vector>

namespace lucentra {

/// The shapes that stand beside one another at about one height, each group a line of writing or what looks like one.
///
/// First letters of about one size are linked, then punctuation to them, then words; the gaps are narrower than the
/// line is high. Nothing is linked across a wall, nor what is much fainter to what is strong. Any thread.
std::vector<std::vector<EdgeShape>> linkedShapes(const std::vector<EdgeShape> &shapes, const Walls &walls);

} // namespace lucentra

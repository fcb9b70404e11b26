#pragma once

#include "EdgeShapes.h"

#include <vector>

namespace lucentra {

/// The entries of a menu bar, which stand as near as the line is high, come apart where a gap is much wider than any
/// space between the line's words. Shapes and entries come from the left to the right; nearly always there is one.
std::vector<std::vector<EdgeShape>> entriesOf(std::vector<EdgeShape> shapes);

} // namespace lucentra

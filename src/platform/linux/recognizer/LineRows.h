#pragma once

#include "EdgeShapes.h"

#include <vector>

namespace lucentra {

/// The shapes without specks that are no part of the writing, stars or snow: dots higher or lower than any accent, or
/// farther off its ends than punctuation. `shapes` belong to one line.
std::vector<EdgeShape> withoutSpecks(std::vector<EdgeShape> shapes);

/// The rows of writing in what was linked to one: a tall shape beside them (a picture, a brace) may hold several
/// together. They are cut at the empty bands between them, and what spans the bands is left out. Just one, unchanged,
/// where there is no such band.
std::vector<std::vector<EdgeShape>> rowsOf(std::vector<EdgeShape> shapes);

} // namespace lucentra

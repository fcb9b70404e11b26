#pragma once

#include "find/FoundLine.h"

#include <vector>

namespace lucentra {

/// Cuts a line at the marks that readers get wrong and geometry gets right: a middle dot between two words, and three
/// equal dots at the end. `shapes` are the connected parts of its letters, of which there is at least one. The pieces
/// come from the left to the right; a line without such marks is one piece.
QList<LinePiece> piecesOf(std::vector<QRect> shapes, const QRect &line);

} // namespace lucentra

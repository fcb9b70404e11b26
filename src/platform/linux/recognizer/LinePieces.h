#pragma once

#include "EdgeShapes.h"

#include <QImage>
#include <QList>
#include <QString>

namespace lucentra {

/// A part of a line that is read by itself.
struct LinePiece
{
    QRect ink;     ///< pixels of the image
    QString joint; ///< what stands between it and the next piece, or after the last one
};

/// Cuts a line at the marks that readers get wrong and geometry gets right: a middle dot between two words, and three
/// equal dots at the end. The pieces come from the left to the right; a line without such marks is one piece.
QList<LinePiece> piecesOf(std::vector<EdgeShape> shapes, const QRect &line);

/// Whether the last shape is a small ring low on the line: an ideographic full stop, which readers take for a comma.
/// False where it is too small to tell. `image` has 32 bits a pixel.
bool endsInRing(const QImage &image, const std::vector<EdgeShape> &shapes, const QRect &line);

} // namespace lucentra

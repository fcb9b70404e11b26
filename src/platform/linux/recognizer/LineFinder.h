#pragma once

#include "LinePieces.h"

#include <QImage>
#include <QList>
#include <QRect>

namespace lucentra {

/// A place that looks like one line of writing.
struct FoundLine
{
    QRect ink;               ///< pixels of the image, origin top-left; as tight as the letters' outlines
    int shapeCount = 0;      ///< separate outlines in it
    int strength = 0;        ///< mean strength of its edges, 0 to 255
    double density = 0;      ///< edge pixels of its outlines by its area
    QList<LinePiece> pieces; ///< what is read one by one, from the left to the right
    bool endsInRing = false; ///< perhaps an ideographic full stop
    bool isRival = false;    ///< found by its bright letters; of it and what it overlaps the better read is right

    /// A letter or two at most; perhaps an icon.
    bool isShort() const { return shapeCount <= 2 && ink.width() < 2 * ink.height(); }
};

/// Finds the lines of an image with 32 bits a pixel, in no particular order.
///
/// Outlines that stand beside one another at about one height are linked, from the left to the right, as far as the
/// gaps are narrower than the line is high: so the columns of a table and the words of a menu bar stay apart. Nor are
/// they linked across the side of a frame: a label and its field are two lines. Bright letters with dark around them
/// are found by their fill as well: where a picture's edges may have torn such a line, or taken it along, both are
/// there. Lines less than `minimumHeight` pixels high are left out. Any thread.
QList<FoundLine> findLines(const QImage &image, int minimumHeight);

} // namespace lucentra

#pragma once

#include <QList>
#include <QRect>
#include <QString>

#include <array>

namespace lucentra {

/// How sure the net is of each script, by `TextMaps::Script`, in some unit of its own.
using ScriptShares = std::array<double, 4>;

/// A part of a line that is read by itself.
struct LinePiece
{
    QRect ink;            ///< pixels of the image
    QString joint;        ///< what stands between it and the next piece, or after the last one
    ScriptShares scripts; ///< of its letters
};

/// A place where one line of writing is.
struct FoundLine
{
    QRect ink;                  ///< pixels of the image, origin top-left; as tight as the letters
    double sureness = 0;        ///< of the net that its ink is ink, 0 to 1 on average
    int shapeCount = 0;         ///< connected parts of letters in it
    QList<LinePiece> pieces;    ///< what is read one by one, from the left to the right
    QList<LinePiece> stretches; ///< the same, cut where Latin letters meet others as well; empty if they don't

    /// Whether the letters are cut by the upper or lower edge of an image of this height.
    bool isCut(int height) const { return ink.top() <= 0 || ink.bottom() >= height - 1; }
    /// A letter or two at most.
    bool isShort() const { return shapeCount <= 2 && ink.width() < 2 * ink.height(); }
};

} // namespace lucentra

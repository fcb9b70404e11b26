#pragma once

#include "strip/LineNormalizer.h"

namespace lucentra {

/// What a character that may be I, l or 1 looks like. The models tell these by their neighbours rather than by their
/// shape.
enum class StrokeShape {
    Bar, ///< the same from top to bottom
    One, ///< with a flag at its upper left and no foot, or one that is as wide on both sides
    Other
};

/// The shape of the character at the columns from `left` to before `right` of a strip, or of the one nearest to their
/// middle.
StrokeShape strokeShapeAt(const Strip &strip, int left, int right);

/// How many underscores the one there is: two or more are a single bar.
int underscoresAt(const Strip &strip, int left, int right);

} // namespace lucentra

#pragma once

#include "read/PassReader.h"
#include "strip/LineNormalizer.h"

namespace lucentra {

/// The characters of a column side by side, on a strip of the given shape. `column` is on the image turned by 90
/// degrees counter-clockwise.
Strip uprightStrip(const LineNormalizer &column, Separation separation, const StripShape &shape);

/// A reading of a column with the ideographs as a model of horizontal writing knows them, which reads rare ones far
/// better, but neither the marks of vertical writing nor small kana. Unchanged where that model isn't installed or
/// makes something else of the column.
Reading withUprightIdeographs(const Reading &vertical, const LineNormalizer &column, Separation separation,
                              ReadingLanguage horizontal, const PassReader &reader);

} // namespace lucentra

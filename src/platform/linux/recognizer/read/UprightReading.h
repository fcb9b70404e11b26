#pragma once

#include "read/PassReader.h"
#include "strip/LineNormalizer.h"

namespace lucentra {

/// A reading of a column with the ideographs as the model of horizontal writing knows them, which reads rare ones far
/// better, but neither the marks of vertical writing nor small kana. `column` is on the image turned by 90 degrees
/// counter-clockwise. Unchanged where that model isn't installed or makes something else of the column.
Reading withUprightIdeographs(const Reading &vertical, const LineNormalizer &column, Separation separation,
                              const PassReader &reader);

} // namespace lucentra

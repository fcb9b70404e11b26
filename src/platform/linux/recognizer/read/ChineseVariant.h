#pragma once

#include "strip/LineNormalizer.h"

namespace lucentra {

/// How much a line's characters look like simplified Chinese rather than traditional: the logarithm of the odds as a
/// small network sees them, which `training/` makes. Below 0 for traditional, near 0 where there is nothing that only
/// one of the two has; 4 at most either way. The strip is one for the readers of Chinese. Takes some milliseconds. Any
/// thread.
double simplifiedEvidence(const Strip &strip);

} // namespace lucentra

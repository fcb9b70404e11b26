#pragma once

#include "read/PassReader.h"

namespace lucentra {

/// A Korean reading of a line with its Latin letters read by the English model; the Korean one makes digits and signs of
/// them. `english` is the same line's strip for English.
Reading withLatinLetters(const Reading &korean, const Strip &english, const PassReader &reader);

} // namespace lucentra

#pragma once

#include "read/PassReader.h"

namespace lucentra {

/// A Korean reading of a line with its Latin letters and digits, of which that model makes digits and signs, read by
/// the English model where that is surer. `english` is the same line's strip for English.
Reading withLatinLetters(const Reading &reading, const Strip &english, const PassReader &reader);

} // namespace lucentra

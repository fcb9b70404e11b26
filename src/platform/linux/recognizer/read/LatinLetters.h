#pragma once

#include "read/PassReader.h"

namespace lucentra {

/// A Chinese, Japanese or Korean reading of a line with its Latin letters and digits read by the English model, where that
/// is surer. The Korean model makes digits and signs of Latin letters; what the others make of them is nearly right, so
/// an English reading of theirs that differs in much doesn't count. `english` is the same line's strip for English.
Reading withLatinLetters(const Reading &reading, const Strip &english, const PassReader &reader);

} // namespace lucentra

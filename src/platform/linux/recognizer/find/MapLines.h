#pragma once

#include "find/FoundLine.h"
#include "find/TextMaps.h"

namespace lucentra {

/// The lines that the net sees on an image, in no particular order. Lines less than `minimumHeight`
/// pixels high are left out. Any thread.
QList<FoundLine> linesOf(const TextMaps &maps, int minimumHeight);

} // namespace lucentra

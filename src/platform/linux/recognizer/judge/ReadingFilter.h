#pragma once

#include "find/FoundLine.h"
#include "read/LineReader.h"

namespace lucentra {

/// The text as it is meant: no spaces between ideographs or kana.
QString tidied(const QString &text);

/// Whether a reading is writing, or what an icon or a picture's edges happened to look like.
bool isPlausible(const Reading &reading, const FoundLine &line);

} // namespace lucentra

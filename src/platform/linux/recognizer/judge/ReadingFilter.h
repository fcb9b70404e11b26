#pragma once

#include "find/FoundLine.h"
#include "judge/LineBox.h"
#include "read/LineReader.h"

namespace lucentra {

/// The text as it is meant: no spaces between ideographs or kana.
QString tidied(const QString &text);

/// Settles what lone characters are that ideographs and kana have in common, such as in a table of kana or a calendar:
/// each is of the kind of the nearest other one on its row.
void settleTwins(QList<TypeLine> &lines);

/// Whether a reading is writing, or what an icon or a picture's edges happened to look like.
bool isPlausible(const Reading &reading, const FoundLine &line);

} // namespace lucentra

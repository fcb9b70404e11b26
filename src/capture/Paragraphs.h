#pragma once

#include "TextBlock.h"

#include <QList>
#include <QSizeF>

#include <functional>

namespace lucentra {

struct TextLine;

/// Composes blocks of whole paragraphs. Lines are joined if they are one below the other in one column, have one size,
/// the distance of one paragraph, and read as running text that was broken where the column ends; centred lines are
/// joined if they read as a sentence, or as the two lines of a subtitle. Lines that may as well be entries of a list,
/// labels, table cells, code or verse remain blocks of their own, because a wrong join is worse than none.
///
/// `isPhrase`, which may be unset, says whether the engine knows a line as a text by itself. Such a line isn't joined,
/// unless it continues a sentence.
///
/// `lines` are in reading order, and each paragraph takes the place of its first line, except that text in columns is
/// read column by column. `imageSize` is in pixels.
QList<TextBlock> paragraphsFromLines(const QList<TextLine> &lines, const QSizeF &imageSize,
                                     const std::function<bool(const QString &)> &isPhrase = {});

} // namespace lucentra

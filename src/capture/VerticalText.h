#pragma once

#include "TextBlock.h"

#include <QList>
#include <QSizeF>

namespace lucentra {

struct TextLine;

/// Joins columns of vertical text, which come in reading order, to paragraphs: those that are beside each other and have
/// one size, up to a column that ends a sentence and is short, or is followed by an indented one. The translation of a
/// block is horizontal, so that its lines are as many as there is room for. `imageSize` is in pixels.
QList<TextBlock> blocksFromColumns(const QList<TextLine> &columns, const QSizeF &imageSize);

} // namespace lucentra

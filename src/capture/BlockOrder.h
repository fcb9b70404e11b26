#pragma once

#include "TextBlock.h"

#include <QList>
#include <QSizeF>

namespace lucentra {

/// Puts blocks of which some are paragraphs into the order in which a page is read: a column of text, with the headings
/// and captions in it, is read to its end before the column beside it. What is no running text keeps its place.
/// `imageSize` is in pixels. Any thread.
QList<TextBlock> inColumnOrder(const QList<TextBlock> &blocks, const QSizeF &imageSize);

} // namespace lucentra

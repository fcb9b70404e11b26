#pragma once

#include "find/FoundLine.h"
#include "find/TextMaps.h"

#include <QList>
#include <QRect>

namespace lucentra {

/// A column of Japanese or Chinese that is written from the top to the bottom. Places are in pixels of the image turned
/// by 90 degrees counter-clockwise, on which columns are lines and the first one is on top.
struct TextColumn
{
    QRect ink;
    int em = 0; ///< of its group
};

/// Columns that belong together, in reading order: a speech bubble, a page of a book.
struct ColumnGroup
{
    QList<TextColumn> columns;
    bool isSure = false; ///< nothing that was found on the upright image contradicts

    QRect area() const; ///< of all columns
};

/// Whether lines found on an upright image look like the characters of columns. Columns are looked for only then, since
/// that takes as long as finding the lines.
bool mayBeColumns(const QList<FoundLine> &upright);

/// The columns among the lines that were found on the turned image. Most of those aren't columns where the text is
/// written horizontally; `upright` (found on the upright image, `width` pixels wide) tells them apart.
QList<ColumnGroup> columnsOf(const QList<FoundLine> &turned, const QList<FoundLine> &upright, int width);

/// A place of the turned image on the upright one, which is `width` pixels wide, and back.
QRect uprightRect(const QRect &turned, int width);
QRect turnedRect(const QRect &upright, int width);

/// Adds to what the net sees of letters on the turned image what it sees on the upright one: some characters beside
/// the dots of an ellipsis, for example.
void addUprightInk(SureMap &turned, const SureMap &upright);

/// Whether a good part of a place is within the columns of a group. Both on the turned image.
bool isWithin(const QRect &place, const ColumnGroup &group);

} // namespace lucentra

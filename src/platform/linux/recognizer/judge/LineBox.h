#pragma once

#include <QList>
#include <QRect>
#include <QString>

namespace lucentra {

/// A line that has been read.
struct TypeLine
{
    QRect ink;    ///< pixels, origin top-left; as tight as the letters
    QString text; ///< what is written there
};

/// The typographic box of each line: as high as its font's size (one em), whatever letters happen to stand in it, so
/// that "more", "Apply" and "Cancel" of one font get boxes of one height. `image` bounds the boxes.
///
/// The letters' ink gives em and baseline: each character reaches as far above and below the baseline as it does in
/// common screen fonts (see `LineBox.cpp` for the numbers), so the tallest and the lowest of a text say which share of
/// the em its ink covers. A box reaches from 0.76 em above the baseline (the ascenders' top) to 0.24 em below it (the
/// descenders' bottom); where ideographs, kana or hangul are written it is their square, from 0.88 em above the
/// baseline to 0.12 em below. Left and right are the ink's. Lines whose ems differ by a tenth at most count as one
/// font's and share their median, since a pixel of ink more or less is chance. A text that says nothing of its font's
/// size (dashes, dots) keeps its ink's box. Any thread.
QList<QRect> typographicBoxes(const QList<TypeLine> &lines, const QRect &image);

} // namespace lucentra

#pragma once

#include <QList>
#include <QRect>

namespace lucentra {

/// The order in which people read boxes (pixels, origin top-left), as indices into `boxes`.
///
/// Rows from top to bottom, each from left to right. Where four rows and more in a row consist of the same two or more
/// long lines side by side, beginning at the same places, they are the columns of a text and are read one after the
/// other; the short cells of a table are not.
QList<int> readingOrder(const QList<QRect> &boxes);

} // namespace lucentra

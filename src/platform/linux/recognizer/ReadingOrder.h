#pragma once

#include <QList>
#include <QRect>

namespace lucentra {

/// The order in which people read boxes (pixels, origin top-left), as indices into `boxes`: rows from top to bottom,
/// each from left to right.
QList<int> readingOrder(const QList<QRect> &boxes);

} // namespace lucentra

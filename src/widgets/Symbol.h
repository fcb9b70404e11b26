#pragma once

#include <QRectF>
#include <QString>

class QPainter;

namespace lucentra {

/// Paints one of the program's own white symbols ("bolt.fill", "clock", ...) into a square, sharp at any scale. Main
/// thread only.
void paintSymbol(QPainter &painter, const QString &name, const QRectF &rect);

} // namespace lucentra

#pragma once

#include <QColor>
#include <QIcon>
#include <QRectF>
#include <QString>

class QPainter;

namespace lucentra {

// The program's own symbols ("bolt.fill", "clock", ...), each in one colour. Main thread only.

/// Paints a symbol into a square, sharp at any scale.
void paintSymbol(QPainter &painter, const QString &name, const QRectF &rect, const QColor &color = Qt::white);

/// A symbol of a size in points.
QPixmap symbolPixmap(const QString &name, int size, const QColor &color, qreal scale);

/// An icon for controls.
QIcon symbolIcon(const QString &name, const QColor &color);

} // namespace lucentra

#pragma once

#include <QColor>
#include <QIcon>
#include <QRectF>
#include <QString>

class QPainter;

namespace lucentra {

// The symbols of the history window ("star", "trash", ...), in one colour. Main thread only.

/// Paints a symbol into a square, sharp at any scale.
void paintSymbolIcon(QPainter &painter, const QString &name, const QRectF &rect, const QColor &color);

/// For buttons of up to 20 points; twice as fine, for screens of that scale.
QIcon symbolIcon(const QString &name, const QColor &color);

/// A symbol of a size in points.
QPixmap symbolPixmap(const QString &name, int size, const QColor &color, qreal scale);

} // namespace lucentra

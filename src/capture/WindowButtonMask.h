#pragma once

#include <QImage>
#include <QList>
#include <QRectF>
#include <QSizeF>

namespace lucentra {

/// Paints the window's buttons over in dark grey, so that they are not read as text. The rectangles are in pane points;
/// `paneSize` is the size of the captured pane in points. Returns the image as RGB32. Any thread.
QImage maskWindowButtons(QImage image, const QList<QRectF> &exclusionRects, const QSizeF &paneSize);

} // namespace lucentra

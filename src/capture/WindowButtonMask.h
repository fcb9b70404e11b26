#pragma once

#include <QImage>
#include <QList>
#include <QRectF>
#include <QSizeF>

namespace lucentra {

/// Paints the window's buttons over in dark grey, so that they are not read as text. The rectangles are in pane points;
/// `paneSize` is the size of the captured pane in points. Returns the image unchanged if there are no rectangles. Any
/// thread.
QImage maskWindowButtons(const QImage &image, const QList<QRectF> &exclusionRects, const QSizeF &paneSize);

} // namespace lucentra

#pragma once

#include <QImage>
#include <QList>
#include <QRectF>
#include <QSizeF>

namespace lucentra {

/// The captured image with the places of the window's buttons painted over in a dark grey, so that nothing there is
/// read as text. The rectangles are pane points; `paneSize` is the pane's size in points, whose capture the image is.
/// Without rectangles, the image comes back unchanged. Any thread.
QImage maskWindowButtons(const QImage &image, const QList<QRectF> &exclusionRects, const QSizeF &paneSize);

} // namespace lucentra

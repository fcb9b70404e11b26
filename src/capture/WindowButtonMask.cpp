#include "WindowButtonMask.h"

#include "GlassAreaCapture.h"

#include <QPainter>

#include <algorithm>

namespace lucentra {

namespace {

/// Grey 0.18: dark enough not to stand out as a shape on dark content, too plain to be read on light content.
constexpr QRgb maskColour = 0xff2e2e2e;

} // namespace

QImage maskWindowButtons(QImage image, const QList<QRectF> &exclusionRects, const QSizeF &paneSize)
{
    image.convertTo(QImage::Format_RGB32);
    if (exclusionRects.isEmpty() || image.isNull())
        return image;
    const QRectF captured(captureInset, captureInset, std::max(1.0, paneSize.width() - 2 * captureInset),
                          std::max(1.0, paneSize.height() - 2 * captureInset));
    const double sx = image.width() / captured.width();
    const double sy = image.height() / captured.height();
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    for (const QRectF &rect : exclusionRects) {
        const QRectF shared = rect.intersected(captured);
        if (shared.isEmpty())
            continue;
        const QRectF pixels((shared.x() - captured.x()) * sx, (shared.y() - captured.y()) * sy, shared.width() * sx,
                            shared.height() * sy);
        painter.fillRect(pixels.toAlignedRect(), QColor::fromRgb(maskColour));
    }
    painter.end();
    return image;
}

} // namespace lucentra

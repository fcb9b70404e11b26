#include "SoftShadow.h"

#include "SoftBlur.h"

#include <QPainter>

#include <algorithm>

namespace lucentra {

QImage SoftShadow::under(const QSizeF &size, double scale, const std::function<void(QPainter &)> &draw) const
{
    const QSize pixels = (size * scale).toSize();
    if (pixels.isEmpty())
        return {};
    QImage shape(pixels, QImage::Format_ARGB32_Premultiplied);
    shape.setDevicePixelRatio(scale);
    shape.fill(Qt::transparent);
    {
        QPainter painter(&shape);
        draw(painter);
    }
    // One channel is enough, and so soft a picture needs no more than one pixel per point.
    const int reduction = std::max(1, int(scale));
    QImage shadow = shape.convertToFormat(QImage::Format_Alpha8);
    if (reduction > 1)
        shadow = shadow.scaled(pixels / reduction, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                     .convertToFormat(QImage::Format_Alpha8);
    softBlur(shadow, deviation * scale / reduction);
    if (color != Qt::black) {
        shadow.convertTo(QImage::Format_ARGB32_Premultiplied);
        QPainter coloring(&shadow);
        coloring.setCompositionMode(QPainter::CompositionMode_SourceIn);
        coloring.fillRect(shadow.rect(), color);
    }

    QImage picture(pixels, QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setOpacity(opacity);
    painter.drawImage(QRectF(offset, QSizeF(pixels) / scale), shadow, shadow.rect());
    painter.setOpacity(1);
    painter.drawImage(0, 0, shape);
    return picture;
}

} // namespace lucentra

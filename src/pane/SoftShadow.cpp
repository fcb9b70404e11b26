#include "SoftShadow.h"

#include "SoftBlur.h"

#include <QPainter>

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
    QImage picture = shape;
    {
        QPainter painter(&picture);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(QRectF({}, size), color);
    }
    softBlur(picture, radius / 2 * scale); // a spread of twice the deviation is all that is seen of a Gaussian
    QImage shifted(pixels, QImage::Format_ARGB32_Premultiplied);
    shifted.setDevicePixelRatio(scale);
    shifted.fill(Qt::transparent);
    QPainter painter(&shifted);
    painter.drawImage(offset, picture);
    painter.drawImage(0, 0, shape);
    return shifted;
}

} // namespace lucentra

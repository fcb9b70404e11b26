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
    QImage spread = shape.convertToFormat(QImage::Format_Alpha8); // one channel, a quarter of the work
    spread.setDevicePixelRatio(scale);
    softBlur(spread, radius / 2 * scale); // a spread of twice the deviation is all that is seen of a Gaussian
    QImage picture(pixels, QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(scale);
    picture.fill(color);
    {
        QPainter painter(&picture);
        painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
        painter.drawImage(0, 0, spread);
    }
    QImage shifted(pixels, QImage::Format_ARGB32_Premultiplied);
    shifted.setDevicePixelRatio(scale);
    shifted.fill(Qt::transparent);
    QPainter painter(&shifted);
    painter.drawImage(offset, picture);
    painter.drawImage(0, 0, shape);
    return shifted;
}

} // namespace lucentra

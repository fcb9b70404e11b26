#include "OverlayPainter.h"

#include "OverlayConstants.h"
#include "SoftBlur.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace lucentra {

using namespace overlay;

namespace {

/// The shadow's radius is the standard deviation of its blur; after three of them nothing is left of it.
constexpr double shadowReach = 3 * shadowRadius + shadowOffset;

/// Pixels per point beyond which the picture is only enlarged: no screen has more, and a printer's picture would not
/// fit into memory.
constexpr double maximumScale = 8;

QImage emptyPicture(const QSizeF &pixels)
{
    QImage image(int(std::ceil(pixels.width())), int(std::ceil(pixels.height())), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

/// Draws a blurred black copy of the text.
void drawShadow(QPainter &painter, const QImage &text, double scale)
{
    // So soft a picture needs no more than one pixel a point.
    const int reduction = std::max(1, int(scale));
    QImage shadow = text.convertToFormat(QImage::Format_Alpha8);
    if (reduction > 1)
        shadow = shadow.scaled(shadow.size() / reduction, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                     .convertToFormat(QImage::Format_Alpha8);
    softBlur(shadow, shadowRadius * scale / reduction);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRectF(QPointF(0, shadowOffset * scale), QSizeF(text.size())), shadow);
}

} // namespace

OverlayPainter::OverlayPainter(std::shared_ptr<OverlayText> text, const OverlayLayout &layout)
    : m_text(std::move(text))
    , m_layout(layout)
{
}

QRectF OverlayPainter::paintedArea() const
{
    QRectF area = m_layout.frame;
    area.setHeight(verticalSlack + m_layout.lines * m_text->lineHeight(m_layout.fontSize));
    return area.adjusted(-shadowReach, -shadowReach, shadowReach, shadowReach);
}

OverlayPainter::Picture OverlayPainter::render(double scale, QPointF remainder) const
{
    const QRectF area = paintedArea();
    QImage text = emptyPicture(area.size() * scale + QSizeF(1, 1));
    QPainter textPainter(&text);
    textPainter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    textPainter.setPen(QColor::fromRgbF(textWhite, textWhite, textWhite));
    textPainter.translate(remainder);
    textPainter.scale(scale, scale);
    const QPointF corner = m_layout.frame.topLeft() - area.topLeft() + QPointF(sidePadding, verticalPadding);
    m_text->draw(textPainter, corner, m_layout.frame.width() - 2 * sidePadding, m_layout.fontSize, m_layout.lines);
    textPainter.end();

    QImage image = emptyPicture(text.size());
    QPainter painter(&image);
    drawShadow(painter, text, scale);
    painter.drawImage(0, 0, text);
    painter.end();
    return {image, scale, remainder};
}

void OverlayPainter::paint(QPainter &painter)
{
    const QTransform device = painter.deviceTransform();
    const double deviceScale = std::sqrt(std::abs(device.determinant()));
    if (!(deviceScale > 0) || !std::isfinite(deviceScale))
        return;
    const double scale = std::min(maximumScale, deviceScale);
    const QPointF corner = device.map(paintedArea().topLeft());
    const QPointF pixel(std::floor(corner.x()), std::floor(corner.y()));
    if (m_picture.scale != scale || m_picture.remainder != corner - pixel)
        m_picture = render(scale, corner - pixel);

    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QPointF topLeft = device.inverted().map(pixel);
    painter.drawImage(QRectF(topLeft, QSizeF(m_picture.image.size()) / scale), m_picture.image);
    painter.restore();
}

} // namespace lucentra

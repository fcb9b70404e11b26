#include "OverlayPainter.h"

#include "OverlayConstants.h"
#include "SoftShadow.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace lucentra {

using namespace overlay;

namespace {

constexpr double shadowReach = 3 * shadowDeviation + shadowOffset;

/// Pixels per point. Above this scale the picture is enlarged: no screen has more, and a picture for a printer wouldn't
/// fit into memory.
constexpr double maximumScale = 8;

} // namespace

OverlayPainter::OverlayPainter(std::shared_ptr<OverlayText> text, const OverlayLayout &layout, GlassTone ground)
    : m_text(std::move(text))
    , m_layout(layout)
    , m_ground(ground)
{
}

QRectF OverlayPainter::paintedArea() const
{
    QRectF area = m_layout.frame;
    area.setHeight(verticalSlack +
                   m_layout.lines * std::max(m_layout.lineDistance, m_text->lineHeight(m_layout.fontSize)));
    return area.adjusted(-shadowReach, -shadowReach, shadowReach, shadowReach);
}

QRectF OverlayPainter::textArea() const
{
    QRectF area = m_layout.frame;
    if (m_layout.lines == 1 && m_layout.alignment == Qt::AlignLeft && !m_text->isRightToLeft())
        area.setWidth(std::min(area.width(), m_text->lineWidth(m_layout.fontSize) + 2 * sidePadding));
    return area;
}

OverlayPainter::Picture OverlayPainter::render(double scale, QPointF remainder) const
{
    const QRectF area = paintedArea();
    const QSize pixels(int(std::ceil(area.width() * scale + 1)), int(std::ceil(area.height() * scale + 1)));
    const bool isDark = m_ground == GlassTone::Dark;
    const float grey = isDark ? textWhite : textBlack;
    const SoftShadow shadow{.deviation = shadowDeviation,
                            .offset = {0, isDark ? shadowOffset : 0},
                            .color = isDark ? Qt::black : Qt::white};
    const QImage image = shadow.under(QSizeF(pixels) / scale, scale, [&](QPainter &painter) {
        painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
        painter.setPen(QColor::fromRgbF(grey, grey, grey));
        painter.translate(remainder / scale);
        const QPointF corner = m_layout.frame.topLeft() - area.topLeft() + QPointF(sidePadding, verticalPadding);
        m_text->draw(painter, corner, m_layout.frame.width() - 2 * sidePadding, m_layout.fontSize, m_layout.lines,
                     m_layout.lineDistance, m_layout.alignment);
    });
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

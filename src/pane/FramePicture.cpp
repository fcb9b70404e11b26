#include "FramePicture.h"

#include "PaneShape.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace lucentra {

namespace {

/// How far inside a square with rounded corners a point lies. Points; negative outside.
double distanceInside(double x, double y, double side)
{
    const double half = side / 2;
    const double dx = std::abs(x - half) - (half - paneCornerRadius);
    const double dy = std::abs(y - half) - (half - paneCornerRadius);
    const double beyondCorner = std::hypot(std::max(dx, 0.0), std::max(dy, 0.0));
    return paneCornerRadius - beyondCorner - std::min(std::max(dx, dy), 0.0);
}

/// The line lies this far inside the edge, so that its outer side isn't cut off.
constexpr double lineInset = 0.5;

} // namespace

template <typename Strength>
FramePicture FramePicture::make(const QColor &color, double scale, double reach, Strength strength)
{
    const int corner = int(std::ceil(depth * scale));
    const int side = 2 * corner + 1;
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < side; ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < side; ++x) {
            const double inside = distanceInside((x + 0.5) / scale, (y + 0.5) / scale, side / scale);
            const double alpha = std::clamp(strength(inside), 0.0, 1.0) * color.alphaF();
            line[x] = qPremultiply(qRgba(color.red(), color.green(), color.blue(), int(std::lround(alpha * 255))));
        }
    }
    FramePicture picture;
    picture.m_picture = QPixmap::fromImage(image);
    picture.m_cornerPixels = corner;
    picture.m_reach = reach;
    return picture;
}

FramePicture FramePicture::line(const NeonBorderStyle &style, double scale)
{
    // A pixel is covered by as much as reaches into it from either side.
    return make(style.color, scale, std::ceil(lineInset + style.lineWidth) + 1, [&](double inside) {
        const double fromOuter = (inside - lineInset) * scale + 0.5;
        const double fromInner = (lineInset + style.lineWidth - inside) * scale + 0.5;
        return std::min({fromOuter, fromInner, 1.0});
    });
}

FramePicture FramePicture::glow(const NeonBorderStyle &style, double scale)
{
    const double deviation = style.glowRadius / 2;
    return make(style.color, scale, depth, [&](double inside) {
        const double fromLine = inside - lineInset - style.lineWidth / 2;
        const double edge = std::clamp((inside - lineInset) * scale + 0.5, 0.0, 1.0);
        return edge * std::exp(-fromLine * fromLine / (2 * deviation * deviation));
    });
}

void FramePicture::paint(QPainter &painter, const QRectF &rect, double opacity) const
{
    if (m_picture.isNull() || opacity <= 0)
        return;
    const double corner = std::min({double(depth), rect.width() / 2, rect.height() / 2});
    const QSizeF pixels(m_cornerPixels, m_cornerPixels);
    const QSizeF points(corner, corner);
    const double far = m_cornerPixels + 1;
    painter.save();
    painter.setOpacity(painter.opacity() * opacity);
    painter.drawPixmap(QRectF(rect.topLeft(), points), m_picture, QRectF(QPointF(0, 0), pixels));
    painter.drawPixmap(QRectF(rect.topRight() - QPointF(corner, 0), points), m_picture,
                       QRectF(QPointF(far, 0), pixels));
    painter.drawPixmap(QRectF(rect.bottomLeft() - QPointF(0, corner), points), m_picture,
                       QRectF(QPointF(0, far), pixels));
    painter.drawPixmap(QRectF(rect.bottomRight() - QPointF(corner, corner), points), m_picture,
                       QRectF(QPointF(far, far), pixels));
    paintEdges(painter, rect, corner);
    painter.restore();
}

void FramePicture::paintEdges(QPainter &painter, const QRectF &rect, double corner) const
{
    // The middle row and column of the picture, as deep as there is something to see.
    const double side = 2 * m_cornerPixels + 1;
    const double reach = std::min(m_reach, corner);
    const double reachPixels = m_cornerPixels * reach / depth;
    const double across = rect.width() - 2 * corner;
    const double down = rect.height() - 2 * corner;
    if (across > 0) {
        painter.drawPixmap(QRectF(rect.x() + corner, rect.y(), across, reach), m_picture,
                           QRectF(m_cornerPixels, 0, 1, reachPixels));
        painter.drawPixmap(QRectF(rect.x() + corner, rect.bottom() - reach, across, reach), m_picture,
                           QRectF(m_cornerPixels, side - reachPixels, 1, reachPixels));
    }
    if (down > 0) {
        painter.drawPixmap(QRectF(rect.x(), rect.y() + corner, reach, down), m_picture,
                           QRectF(0, m_cornerPixels, reachPixels, 1));
        painter.drawPixmap(QRectF(rect.right() - reach, rect.y() + corner, reach, down), m_picture,
                           QRectF(side - reachPixels, m_cornerPixels, reachPixels, 1));
    }
}

} // namespace lucentra

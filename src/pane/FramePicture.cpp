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
FramePicture FramePicture::make(const QColor &color, double scale, Strength strength)
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
    return picture;
}

FramePicture FramePicture::line(const NeonBorderStyle &style, double scale)
{
    // A pixel is covered by as much as reaches into it from either side.
    return make(style.color, scale, [&](double inside) {
        const double fromOuter = (inside - lineInset) * scale + 0.5;
        const double fromInner = (lineInset + style.lineWidth - inside) * scale + 0.5;
        return std::min({fromOuter, fromInner, 1.0});
    });
}

FramePicture FramePicture::glow(const NeonBorderStyle &style, double scale)
{
    const double deviation = style.glowRadius / 2;
    return make(style.color, scale, [&](double inside) {
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
    const double xs[]{rect.left(), rect.left() + corner, rect.right() - corner, rect.right()};
    const double ys[]{rect.top(), rect.top() + corner, rect.bottom() - corner, rect.bottom()};
    const double sources[]{0, m_cornerPixels, m_cornerPixels + 1, 2 * m_cornerPixels + 1};
    painter.save();
    painter.setOpacity(painter.opacity() * opacity);
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            if (row == 1 && column == 1)
                continue; // nothing is drawn in the middle
            const QRectF target(QPointF(xs[column], ys[row]), QPointF(xs[column + 1], ys[row + 1]));
            const QRectF source(QPointF(sources[column], sources[row]), QPointF(sources[column + 1], sources[row + 1]));
            if (!target.isEmpty())
                painter.drawPixmap(target, m_picture, source);
        }
    }
    painter.restore();
}

} // namespace lucentra

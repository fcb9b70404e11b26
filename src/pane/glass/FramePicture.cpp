#include "FramePicture.h"

#include "PaneShape.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace lucentra {

namespace {

/// How far inside a square with rounded corners a point is. Points; negative outside.
double distanceInside(double x, double y, double side)
{
    const double half = side / 2;
    const double dx = std::abs(x - half) - (half - paneCornerRadius);
    const double dy = std::abs(y - half) - (half - paneCornerRadius);
    const double beyondCorner = std::hypot(std::max(dx, 0.0), std::max(dy, 0.0));
    return paneCornerRadius - beyondCorner - std::min(std::max(dx, dy), 0.0);
}

/// The line's distance from the edge, so that its outer side isn't cut off.
constexpr double lineInset = 0.5;

/// The length of the edges' pieces.
constexpr int pieceLength = 128;

} // namespace

template <typename Strength>
FramePicture FramePicture::make(const QColor &color, double scale, double reach, Strength strength)
{
    const int side = int(std::ceil((2 * depth + pieceLength) * scale));
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
    picture.m_scale = scale;
    picture.m_reach = reach;
    return picture;
}

FramePicture FramePicture::line(const NeonBorderStyle &style, double scale)
{
    // A pixel's coverage is the part of it that the line covers from either side.
    return make(style.color, scale, std::ceil(lineInset + style.lineWidth) + 1, [&](double inside) {
        const double fromOuter = (inside - lineInset) * scale + 0.5;
        const double fromInner = (lineInset + style.lineWidth - inside) * scale + 0.5;
        return std::min({fromOuter, fromInner, 1.0});
    });
}

FramePicture FramePicture::glow(const NeonBorderStyle &style, double scale)
{
    const double deviation = style.glowReach / 2; // e^-2 is about a seventh
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
    const double d = depth;
    const QSizeF corner(d * m_scale, d * m_scale);
    const double far = m_picture.width() - corner.width();
    painter.save();
    painter.setOpacity(painter.opacity() * opacity);
    for (const bool isRight : {false, true}) {
        for (const bool isBottom : {false, true}) {
            painter.drawPixmap(
                QRectF(isRight ? rect.right() - d : rect.left(), isBottom ? rect.bottom() - d : rect.top(), d, d),
                m_picture, QRectF(QPointF(isRight ? far : 0, isBottom ? far : 0), corner));
        }
    }
    paintEdges(painter, rect);
    painter.restore();
}

void FramePicture::paintEdges(QPainter &painter, const QRectF &rect) const
{
    const double d = depth;
    const double near = d * m_scale;
    const double reach = m_reach * m_scale;
    const double farReach = m_picture.width() - reach;
    const auto pieces = [d](double side) { return int(std::ceil((side - 2 * d) / pieceLength)); };
    for (int i = 0; i < pieces(rect.width()); ++i) {
        const double x = rect.left() + d + double(i) * pieceLength;
        const double length = std::min<double>(pieceLength, rect.right() - d - x);
        painter.drawPixmap(QRectF(x, rect.top(), length, m_reach), m_picture, QRectF(near, 0, length * m_scale, reach));
        painter.drawPixmap(QRectF(x, rect.bottom() - m_reach, length, m_reach), m_picture,
                           QRectF(near, farReach, length * m_scale, reach));
    }
    for (int i = 0; i < pieces(rect.height()); ++i) {
        const double y = rect.top() + d + double(i) * pieceLength;
        const double length = std::min<double>(pieceLength, rect.bottom() - d - y);
        painter.drawPixmap(QRectF(rect.left(), y, m_reach, length), m_picture,
                           QRectF(0, near, reach, length * m_scale));
        painter.drawPixmap(QRectF(rect.right() - m_reach, y, m_reach, length), m_picture,
                           QRectF(farReach, near, reach, length * m_scale));
    }
}

} // namespace lucentra

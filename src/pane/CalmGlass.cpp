#include "CalmGlass.h"

#include "FrostedBackdrop.h"
#include "SoftBlur.h"

#include <QMarginsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace lucentra {

namespace {

/// Of the glass where something is to be read.
constexpr double leastCalmOpacity = 0.72;
/// How far a calm area reaches beyond what is to be read, and how softly it ends.
constexpr QMarginsF calmMargins(10, 6, 10, 6);
constexpr double calmCornerRadius = 9;
constexpr double calmDeviation = 4;
/// Pixels per point at which the mask is blurred: so soft a picture needs no more, and the blur of one of a large
/// screen's size would hold the main thread up for most of a second.
constexpr double blurredScale = 0.5;

constexpr double sheenShare = 0.55; ///< of the glass's height
constexpr float sheenStrength = 0.055F;

} // namespace

QImage calmMask(const QSizeF &size, double pixelsPerPoint, const QList<CalmArea> &areas)
{
    QImage blurred(int(std::ceil(size.width() * blurredScale)), int(std::ceil(size.height() * blurredScale)),
                   QImage::Format_ARGB32_Premultiplied);
    blurred.fill(Qt::transparent);
    QPainter painter(&blurred);
    painter.scale(blurredScale, blurredScale);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (const CalmArea &area : areas) {
        painter.setOpacity(area.strength);
        painter.setBrush(Qt::black);
        painter.drawRoundedRect(area.rect.marginsAdded(calmMargins), calmCornerRadius, calmCornerRadius);
    }
    painter.end();
    blurred.convertTo(QImage::Format_Alpha8); // of which a quarter is to be blurred
    softBlur(blurred, calmDeviation * blurredScale);
    blurred.convertTo(QImage::Format_ARGB32_Premultiplied);

    QImage mask((size * pixelsPerPoint).toSize(), QImage::Format_ARGB32_Premultiplied);
    mask.fill(Qt::transparent);
    mask.setDevicePixelRatio(pixelsPerPoint);
    QPainter enlarging(&mask);
    enlarging.setRenderHint(QPainter::SmoothPixmapTransform);
    enlarging.drawImage(QRectF(QPointF(), QSizeF(blurred.size()) / blurredScale), blurred);
    return mask;
}

void paintSheen(QPainter &painter, const QRectF &rect)
{
    QLinearGradient sheen(rect.topLeft(), QPointF(rect.left(), rect.top() + sheenShare * rect.height()));
    sheen.setColorAt(0, QColor::fromRgbF(1, 1, 1, sheenStrength));
    sheen.setColorAt(1, QColor::fromRgbF(1, 1, 1, 0));
    painter.fillRect(rect, sheen);
}

void paintCalmGlass(QPainter &painter, const FrostedBackdrop &frosted, const QRectF &rect, const QImage &mask,
                    double opacity)
{
    opacity = std::max(opacity, leastCalmOpacity);
    QImage calm(mask.size(), QImage::Format_ARGB32_Premultiplied);
    calm.setDevicePixelRatio(mask.devicePixelRatio());
    const QRectF whole(QPointF(), rect.size());
    QPainter onCalm(&calm);
    onCalm.setCompositionMode(QPainter::CompositionMode_Source);
    frosted.paintCalm(onCalm, whole, opacity);
    onCalm.setCompositionMode(QPainter::CompositionMode_SourceOver);
    onCalm.setOpacity(opacity);
    paintSheen(onCalm, whole);
    onCalm.setOpacity(1);
    onCalm.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    onCalm.drawImage(0, 0, mask);
    onCalm.end();
    painter.drawImage(rect.topLeft(), calm);
}

} // namespace lucentra

#include "CalmGlass.h"

#include "FrostedBackdrop.h"
#include "SoftBlur.h"

#include <QMarginsF>
#include <QPainter>

#include <algorithm>

namespace lucentra {

namespace {

/// Of the glass where something is to be read.
constexpr double leastCalmOpacity = 0.72;
/// How far a calm area reaches beyond what is to be read, and how softly it ends.
constexpr QMarginsF calmMargins(10, 6, 10, 6);
constexpr double calmCornerRadius = 9;
constexpr double calmDeviation = 4;

constexpr double sheenShare = 0.55; ///< of the glass's height
constexpr float sheenStrength = 0.055F;

} // namespace

QImage calmMask(const QSizeF &size, double pixelsPerPoint, const QList<CalmArea> &areas)
{
    QImage mask((size * pixelsPerPoint).toSize(), QImage::Format_ARGB32_Premultiplied);
    mask.fill(Qt::transparent);
    mask.setDevicePixelRatio(pixelsPerPoint);
    QPainter painter(&mask);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (const CalmArea &area : areas) {
        painter.setOpacity(area.strength);
        painter.setBrush(Qt::black);
        painter.drawRoundedRect(area.rect.marginsAdded(calmMargins), calmCornerRadius, calmCornerRadius);
    }
    painter.end();
    softBlur(mask, calmDeviation * pixelsPerPoint);
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

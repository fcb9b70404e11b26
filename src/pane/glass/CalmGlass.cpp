#include "CalmGlass.h"

#include "FrostedBackdrop.h"
#include "SoftBlur.h"

#include <QMarginsF>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace lucentra {

namespace {

/// The least opacity of calm glass.
constexpr double leastCalmOpacity = 0.72;
/// How far a calm area extends around the text, and how soft its edge is.
constexpr QMarginsF calmMargins(10, 6, 10, 6);
constexpr double calmCornerRadius = 9;
constexpr double calmDeviation = 4;

constexpr double sheenShare = 0.55; ///< of the glass's height
constexpr float sheenStrength = 0.055F;

/// The greatest distance, in points, between the starts of lines that share an area.
constexpr double sharedStart = 24;

/// How far a band extends above and below the text before it is lengthened. Points.
constexpr double bandMargin = 8;
/// How far a band is lengthened at most to cover whole lines, and the heights of its soft ends. Points.
constexpr int longestReach = 28;
constexpr double leastSlope = 4;
constexpr double leastSpace = 5;
constexpr double usualSlope = 20;
/// The share of the space between lines that the band covers fully, since its blur makes it weaker at its ends.
constexpr double wholeShare = 0.4;
constexpr double mostWhole = 6; ///< points
/// Differences of grey that count as an edge.
constexpr int edgeContrast = 24;
/// A row between lines has at most this part of the edges of the richest row.
constexpr double quietShare = 0.05;

/// Whether two lines belong to the same block.
bool goesOn(const QRectF &upper, const QRectF &lower)
{
    const double distance = lower.top() - upper.bottom();
    return std::abs(lower.left() - upper.left()) <= sharedStart && distance <= lower.height() &&
           lower.bottom() > upper.bottom();
}

void joinLines(QList<CalmArea> &areas)
{
    std::stable_sort(areas.begin(), areas.end(),
                     [](const CalmArea &a, const CalmArea &b) { return a.rect.top() < b.rect.top(); });
    QList<CalmArea> joined;
    for (const CalmArea &area : std::as_const(areas)) {
        const auto block = std::find_if(joined.begin(), joined.end(), [&](const CalmArea &each) {
            return each.slopeAbove == 0 && area.slopeAbove == 0 && goesOn(each.rect, area.rect);
        });
        if (block == joined.end())
            joined.append(area);
        else
            block->rect |= area.rect;
    }
    areas = joined;
}

void fillBand(QPainter &painter, const CalmArea &area)
{
    const QRectF whole = area.rect.adjusted(0, -area.slopeAbove, 0, area.slopeBelow);
    QLinearGradient slope(whole.topLeft(), whole.bottomLeft());
    constexpr int stops = 8; // corners of the slope would be visible as lines
    for (int i = 0; i <= stops; ++i) {
        const double way = double(i) / stops;
        const QColor color = QColor::fromRgbF(0, 0, 0, float(way * way * (3 - 2 * way)));
        slope.setColorAt(way * area.slopeAbove / whole.height(), color);
        slope.setColorAt(1 - way * area.slopeBelow / whole.height(), color);
    }
    painter.fillRect(whole, slope);
}

/// The number of edges in each row.
std::vector<int> edgesOfRows(const QImage &picture)
{
    const QImage grey = picture.convertToFormat(QImage::Format_Grayscale8);
    std::vector<int> edges;
    for (int y = 0; y < grey.height(); ++y) {
        const uchar *line = grey.constScanLine(y);
        int count = 0;
        for (int x = 1; x < grey.width(); ++x)
            count += std::abs(line[x] - line[x - 1]) > edgeContrast;
        edges.push_back(count);
    }
    return edges;
}

void paintSheen(QPainter &painter, const QRectF &rect)
{
    QLinearGradient sheen(rect.topLeft(), QPointF(rect.left(), rect.top() + sheenShare * rect.height()));
    sheen.setColorAt(0, QColor::fromRgbF(1, 1, 1, sheenStrength));
    sheen.setColorAt(1, QColor::fromRgbF(1, 1, 1, 0));
    painter.fillRect(rect, sheen);
}

} // namespace

bool areCalmAreasSeen(double glassOpacity)
{
    return glassOpacity < leastCalmOpacity;
}

QImage calmMask(const QSizeF &size, QList<CalmArea> areas, bool joined)
{
    QImage mask(int(std::ceil(size.width() * softScale)), int(std::ceil(size.height() * softScale)),
                QImage::Format_ARGB32_Premultiplied);
    mask.fill(Qt::transparent);
    QPainter painter(&mask);
    painter.scale(softScale, softScale);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    if (joined)
        joinLines(areas);
    for (const CalmArea &area : std::as_const(areas)) {
        painter.setOpacity(area.strength);
        if (area.slopeAbove > 0) {
            fillBand(painter, area);
        } else {
            painter.setBrush(Qt::black);
            painter.drawRoundedRect(area.rect.marginsAdded(calmMargins), calmCornerRadius, calmCornerRadius);
        }
    }
    painter.end();
    mask.convertTo(QImage::Format_Alpha8); // a quarter of the work for the blur
    softBlur(mask, calmDeviation * softScale);
    return mask;
}

QRectF calmBounds(const QList<CalmArea> &areas)
{
    constexpr double softness = 3 * calmDeviation;
    QRectF bounds;
    for (const CalmArea &area : areas)
        bounds |= area.rect.adjusted(0, -area.slopeAbove, 0, area.slopeBelow)
                      .marginsAdded(calmMargins)
                      .adjusted(-softness, -softness, softness, softness);
    return bounds;
}

CalmArea calmBand(const QRectF &place, const QImage &content, const QSizeF &glass)
{
    CalmArea band{.rect = QRectF(0, place.top() - bandMargin, glass.width(), place.height() + 2 * bandMargin),
                  .slopeAbove = usualSlope,
                  .slopeBelow = usualSlope};
    if (content.isNull())
        return band;
    const double scale = content.width() / glass.width(); // pixels per point
    const int firstRow = std::max(0, int((band.rect.top() - longestReach) * scale));
    const int lastRow = std::min(content.height() - 1, int((band.rect.bottom() + longestReach) * scale));
    const std::vector<int> edges = edgesOfRows(content.copy(0, firstRow, content.width(), lastRow - firstRow + 1));
    const double limit = quietShare * (edges.empty() ? 0 : *std::max_element(edges.begin(), edges.end()));
    // Moves one end of the band outwards into the next space between lines that has room for a slope.
    const auto lengthen = [&](double end, int step, double &slope) {
        int row = int(end * scale) - firstRow;
        const auto isInside = [&] { return row >= 0 && row < int(edges.size()); };
        while (isInside()) {
            while (isInside() && edges[size_t(row)] > limit)
                row += step;
            const int near = row;
            while (isInside() && edges[size_t(row)] <= limit)
                row += step;
            const double space = std::abs(row - near) / scale;
            if (row == near || (space < leastSpace && isInside()))
                continue;
            const double whole = std::min(wholeShare * space, mostWhole);
            slope = std::clamp(space - whole, leastSlope, usualSlope);
            return (near + firstRow) / scale + step * whole;
        }
        return end;
    };
    band.rect.setTop(lengthen(band.rect.top(), -1, band.slopeAbove));
    band.rect.setBottom(lengthen(band.rect.bottom(), 1, band.slopeBelow));
    return band;
}

void paintGlass(QPainter &painter, const FrostedBackdrop &frosted, const QRectF &rect, double opacity)
{
    painter.setOpacity(opacity);
    frosted.paint(painter, rect, 1);
    paintSheen(painter, rect);
    painter.setOpacity(1);
}

void paintCalmGlass(QPainter &painter, const FrostedBackdrop &frosted, const QRectF &rect, const QImage &mask,
                    const QRectF &part, double opacity)
{
    opacity = std::max(opacity, leastCalmOpacity);
    QImage calm(mask.size(), QImage::Format_ARGB32_Premultiplied);
    calm.fill(Qt::transparent);
    const QRectF whole(QPointF(), rect.size());
    const QRectF shown = QRectF(part.toAlignedRect()) & whole;
    QPainter onCalm(&calm);
    onCalm.scale(softScale, softScale);
    onCalm.setClipRect(shown);
    onCalm.setCompositionMode(QPainter::CompositionMode_Source);
    frosted.paintCalm(onCalm, whole, opacity);
    onCalm.setCompositionMode(QPainter::CompositionMode_SourceOver);
    onCalm.setOpacity(opacity);
    paintSheen(onCalm, whole);
    onCalm.setOpacity(1);
    onCalm.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    onCalm.resetTransform();
    onCalm.drawImage(0, 0, mask);
    onCalm.end();
    painter.save();
    painter.setClipRect(shown.translated(rect.topLeft()), Qt::IntersectClip);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRectF(rect.topLeft(), QSizeF(calm.size()) / softScale), calm);
    painter.restore();
}

} // namespace lucentra

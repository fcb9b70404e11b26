#include "OverlayPlacement.h"

#include "GlassAreaCapture.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace lucentra {

namespace {

/// How far, in points, a line may begin above another's bottom and still count as below it: boxes of lines that are
/// set solid overlap a little.
constexpr double stackingTolerance = 2.0;
/// Lines that overlap less than this, in points, are side by side.
constexpr double sideBySideOverlap = 4.0;
/// The gap that is kept above the next line and before the next text on a row, in points.
constexpr double gapToNext = 4.0;
/// Starts that are no farther apart than this, in points, become one.
constexpr double commonStart = 3.0;

/// The far edges are outside.
bool holds(const QRectF &rect, QPointF point)
{
    return point.x() >= rect.left() && point.x() < rect.right() && point.y() >= rect.top() && point.y() < rect.bottom();
}

bool isBelow(const QRectF &lower, const QRectF &upper)
{
    const double shared = std::min(lower.right(), upper.right()) - std::max(lower.left(), upper.left());
    return upper.bottom() - stackingTolerance <= lower.top() && shared > sideBySideOverlap;
}

/// Whether a rectangle is to the right of another on the same row.
bool isBeside(const QRectF &right, const QRectF &left)
{
    const double shared = std::min(right.bottom(), left.bottom()) - std::max(right.top(), left.top());
    return left.right() - stackingTolerance <= right.left() && shared > sideBySideOverlap;
}

/// Recognized lines of one column start a little apart, by their first letters' shapes.
void alignStarts(QList<TranslationOverlayCandidate> &candidates)
{
    QList<TranslationOverlayCandidate *> fromLeft;
    for (TranslationOverlayCandidate &candidate : candidates)
        fromLeft.append(&candidate);
    std::sort(fromLeft.begin(), fromLeft.end(),
              [](const auto *a, const auto *b) { return a->rect.left() < b->rect.left(); });
    double start = -std::numeric_limits<double>::infinity();
    for (TranslationOverlayCandidate *candidate : std::as_const(fromLeft)) {
        if (candidate->rect.left() - start > commonStart)
            start = candidate->rect.left();
        candidate->rect.setLeft(start);
    }
}

/// The columns of a speech bubble or a vertical heading are too narrow for horizontal lines. Widens their place as far
/// as its neighbours and the pane allow.
void widenColumns(QList<TranslationOverlayCandidate> &candidates, double paneWidth)
{
    constexpr double areaGrowth = 1.6;
    for (TranslationOverlayCandidate &candidate : candidates) {
        if (!(candidate.limits.alignment & Qt::AlignVCenter))
            continue;
        QRectF &rect = candidate.rect;
        const double more = (std::sqrt(areaGrowth * rect.width() * rect.height()) - rect.width()) / 2;
        if (more <= 0)
            continue;
        double left = std::max(captureInset, rect.left() - more);
        double right = std::min(paneWidth - captureInset, rect.right() + more);
        for (const TranslationOverlayCandidate &other : std::as_const(candidates)) {
            if (isBeside(rect, other.rect))
                left = std::max(left, other.rect.right() + gapToNext);
            if (isBeside(other.rect, rect))
                right = std::min(right, other.rect.left() - gapToNext);
        }
        rect.setLeft(std::min(rect.left(), std::round(left)));
        rect.setRight(std::max(rect.right(), std::round(right)));
    }
}

void setLimits(QList<TranslationOverlayCandidate> &candidates, double paneHeight)
{
    for (TranslationOverlayCandidate &candidate : candidates) {
        double nextTop = paneHeight;
        double nextLeft = std::numeric_limits<double>::infinity();
        for (const TranslationOverlayCandidate &other : std::as_const(candidates)) {
            if (isBelow(other.rect, candidate.rect))
                nextTop = std::min(nextTop, other.rect.top());
            if (isBeside(other.rect, candidate.rect))
                nextLeft = std::min(nextLeft, other.rect.left());
        }
        // The same gap is kept to the pane's edge.
        const double bottom = std::min(paneHeight, nextTop - gapToNext);
        candidate.limits.bottom = std::max(candidate.rect.bottom(), bottom);
        candidate.limits.right = std::max(candidate.rect.right(), nextLeft - gapToNext);
    }
}

} // namespace

QRectF paneRect(const NormBox &normBox, const QSizeF &paneSize)
{
    const QRectF rect = normBox.in({std::max(1.0, paneSize.width() - 2 * captureInset),
                                    std::max(1.0, paneSize.height() - 2 * captureInset)});
    return {std::round(rect.x()) + captureInset, std::round(rect.y()) + captureInset, std::round(rect.width()),
            std::round(rect.height())};
}

QString textForBlock(const QList<TextBlock> &blocks, const QStringList &translations, qsizetype index)
{
    return index < translations.size() ? translations[index] : blocks[index].text;
}

OverlayPlacement placeOverlays(const QList<TextBlock> &blocks, const QStringList &translations, const QSizeF &paneSize,
                               const QList<QRectF> &exclusionRects)
{
    OverlayPlacement placement;
    const double captureHeight = std::max(1.0, paneSize.height() - 2 * captureInset);
    for (qsizetype i = 0; i < blocks.size(); ++i) {
        const QString text = textForBlock(blocks, translations, i);
        if (text.isEmpty())
            continue;
        placement.copyList.append(text);
        const QRectF rect = paneRect(blocks[i].normBox, paneSize);
        const bool isUnderButtons =
            std::any_of(exclusionRects.begin(), exclusionRects.end(),
                        [&](const QRectF &excluded) { return holds(excluded, rect.center()); });
        if (!isUnderButtons)
            placement.candidates.append({text,
                                         rect,
                                         {.lineHeight = std::round(captureHeight * blocks[i].lineHeight),
                                          .lineCount = blocks[i].lineCount,
                                          .lineDistance = captureHeight * blocks[i].lineDistance,
                                          .alignment = blocks[i].alignment},
                                         blocks[i].text});
    }
    alignStarts(placement.candidates);
    widenColumns(placement.candidates, paneSize.width());
    setLimits(placement.candidates, paneSize.height());
    return placement;
}

} // namespace lucentra

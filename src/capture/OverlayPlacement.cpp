#include "OverlayPlacement.h"

#include "GlassAreaCapture.h"

#include <algorithm>
#include <cmath>

namespace lucentra {

namespace {

/// How far, in points, a line may begin above another's bottom and still count as below it: boxes of lines that are
/// set solid overlap a little.
constexpr double stackingTolerance = 2.0;
/// Lines that share less than this, in points, stand side by side.
constexpr double sideBySideOverlap = 4.0;
/// The gap that is kept above the next line, in points.
constexpr double gapToNextLine = 4.0;

/// The far edges are outside.
bool contains(const QRectF &rect, QPointF point)
{
    return point.x() >= rect.left() && point.x() < rect.right() && point.y() >= rect.top() && point.y() < rect.bottom();
}

bool isBelow(const QRectF &lower, const QRectF &upper)
{
    const double shared = std::min(lower.right(), upper.right()) - std::max(lower.left(), upper.left());
    return upper.bottom() - stackingTolerance <= lower.top() && shared > sideBySideOverlap;
}

} // namespace

QRectF paneRect(const QRectF &normBox, const QSizeF &paneSize)
{
    const double width = std::max(1.0, paneSize.width() - 2 * captureInset);
    const double height = std::max(1.0, paneSize.height() - 2 * captureInset);
    const double top = 1 - (normBox.y() + normBox.height());
    return {std::round(width * normBox.x()) + captureInset, std::round(height * top) + captureInset,
            std::round(width * normBox.width()), std::round(height * normBox.height())};
}

QString textForBlock(const QList<TextBlock> &blocks, const QStringList &translations, qsizetype index)
{
    return index < translations.size() ? translations[index] : blocks[index].text;
}

OverlayPlacement placeOverlays(const QList<TextBlock> &blocks, const QStringList &translations, const QSizeF &paneSize,
                               const QList<QRectF> &exclusionRects)
{
    OverlayPlacement placement;
    for (qsizetype i = 0; i < blocks.size(); ++i) {
        const QString text = textForBlock(blocks, translations, i);
        if (text.isEmpty())
            continue;
        placement.copyList.append(text);
        const QRectF rect = paneRect(blocks[i].normBox, paneSize);
        const bool isUnderButtons =
            std::any_of(exclusionRects.begin(), exclusionRects.end(),
                        [&](const QRectF &excluded) { return contains(excluded, rect.center()); });
        if (!isUnderButtons)
            placement.candidates.append({text, rect});
    }
    return placement;
}

QList<double> bottomLimits(const QList<TranslationOverlayCandidate> &candidates, double paneHeight)
{
    QList<double> limits;
    for (const TranslationOverlayCandidate &candidate : candidates) {
        double nextTop = paneHeight;
        for (const TranslationOverlayCandidate &other : candidates) {
            if (isBelow(other.rect, candidate.rect))
                nextTop = std::min(nextTop, other.rect.top());
        }
        // Nothing below is no line to keep a gap to, but the pane's edge is kept clear just so.
        const double limit = std::min(paneHeight, nextTop - gapToNextLine);
        limits.append(std::max(candidate.rect.bottom(), limit));
    }
    return limits;
}

} // namespace lucentra

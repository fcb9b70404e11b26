#pragma once

#include "TextBlock.h"

#include <QList>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QStringList>

namespace lucentra {

/// A translation and where its source line lies on the pane (pane points, origin top-left, y down).
struct TranslationOverlayCandidate
{
    QString text;
    QRectF rect;

    bool operator==(const TranslationOverlayCandidate &) const = default;
};

/// What a pass puts on the pane and on the pasteboard.
struct OverlayPlacement
{
    QList<TranslationOverlayCandidate> candidates; ///< in the order of the blocks
    QStringList copyList; ///< every text that isn't empty, also those that lie under the window's buttons
};

/// Where a box of the captured image lies on a pane: whole points, the capture's inset included.
QRectF paneRect(const QRectF &normBox, const QSizeF &paneSize);

/// The text that stands for a block: its translation, or its own text where none came back.
QString textForBlock(const QList<TextBlock> &blocks, const QStringList &translations, qsizetype index);

/// Maps blocks and their translations (matched by position; fewer are allowed) onto the pane. What has its centre in
/// an exclusion rectangle (pane points) gets no overlay.
OverlayPlacement placeOverlays(const QList<TextBlock> &blocks, const QStringList &translations, const QSizeF &paneSize,
                               const QList<QRectF> &exclusionRects);

/// The lowest y that each candidate's overlay may reach, so that it grows into the gap below it but not into the next
/// line. Never above the candidate's own bottom.
QList<double> bottomLimits(const QList<TranslationOverlayCandidate> &candidates, double paneHeight);

} // namespace lucentra

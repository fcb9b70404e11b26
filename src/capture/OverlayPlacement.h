#pragma once

#include "TextBlock.h"

#include <QList>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QStringList>

#include <limits>

namespace lucentra {

/// A translation and where its source line lies on the pane (pane points, origin top-left, y down).
struct TranslationOverlayCandidate
{
    QString text;
    QRectF rect;

    bool operator==(const TranslationOverlayCandidate &) const = default;
};

/// How far an overlay may reach so that it doesn't cover another one's place. Pane points.
struct OverlayLimits
{
    double bottom = 0; ///< its lowest y
    /// Its greatest x, unless its text can't be shown otherwise.
    double right = std::numeric_limits<double>::infinity();

    bool operator==(const OverlayLimits &) const = default;
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
/// an exclusion rectangle (pane points) gets no overlay. Overlays that would start at nearly the same x start at one.
OverlayPlacement placeOverlays(const QList<TextBlock> &blocks, const QStringList &translations, const QSizeF &paneSize,
                               const QList<QRectF> &exclusionRects);

/// The limits of each candidate's overlay: it grows into the gap below it but not into the next line, and to the right
/// until the next candidate on its row. Never less than the candidate itself.
QList<OverlayLimits> overlayLimits(const QList<TranslationOverlayCandidate> &candidates, double paneHeight);

} // namespace lucentra

#pragma once

#include "TextBlock.h"

#include <QList>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QStringList>

#include <limits>

namespace lucentra {

/// How large an overlay may become without covering the place of another one. Pane points.
struct OverlayLimits
{
    double bottom = 0; ///< greatest y
    /// Greatest x, unless the text can't be shown otherwise.
    double right = std::numeric_limits<double>::infinity();
    double lineHeight = 0; ///< of the source, which the text's size follows; 0 means that of its rectangle
    // Of a paragraph.
    int lineCount = 1;       ///< of the source
    double lineDistance = 0; ///< between the centres of the source's lines
    Qt::Alignment alignment = Qt::AlignLeft;

    bool operator==(const OverlayLimits &) const = default;
};

/// A translation and the place of its source on the pane (pane points, origin top-left, y down).
struct TranslationOverlayCandidate
{
    QString text;
    QRectF rect;
    OverlayLimits limits;
    QString source{}; ///< the text that was translated

    bool operator==(const TranslationOverlayCandidate &) const = default;
};

/// The result of a pass for the pane and for the pasteboard.
struct OverlayPlacement
{
    QList<TranslationOverlayCandidate> candidates; ///< in the order of the blocks
    QStringList copyList; ///< all texts that aren't empty, including those under the window's buttons
};

/// Maps a box of the captured image to the pane, in whole points. Adds the capture's inset.
QRectF paneRect(const NormBox &normBox, const QSizeF &paneSize);

/// The text to show for a block: its translation, or its own text if there is none.
QString textForBlock(const QList<TextBlock> &blocks, const QStringList &translations, qsizetype index);

/// Maps blocks and their translations (matched by position; there may be fewer) to the pane. A block whose centre is in
/// an exclusion rectangle (pane points) gets no overlay. Overlays whose left edges are nearly equal are aligned. Each
/// may extend down to the next line and right to the next candidate on its row, and is never smaller than its source.
OverlayPlacement placeOverlays(const QList<TextBlock> &blocks, const QStringList &translations, const QSizeF &paneSize,
                               const QList<QRectF> &exclusionRects);

} // namespace lucentra

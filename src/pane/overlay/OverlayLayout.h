#pragma once

#include "OverlayFit.h"
#include "OverlayPlacement.h"
#include "Settings.h"

#include <QRectF>
#include <QString>

#include <optional>

namespace lucentra {

class OverlayText;
class SettingsStore;

/// What the user has chosen for the text of overlays.
struct OverlayFontSettings
{
    bool isAuto = true;        ///< the size follows the source's height
    double storedFontSize = 0; ///< points; used if `isAuto` is false; 0 if none is stored
    QString family;            ///< empty for that of the target language
    GlassTone ground = GlassTone::Dark;

    bool operator==(const OverlayFontSettings &) const = default;
};

/// Any stored value for `isAuto` that isn't a boolean counts as true.
OverlayFontSettings overlayFontSettings(const SettingsStore &settings);

/// Where and how one translation is drawn.
struct OverlayLayout
{
    QRectF frame;        ///< pane points, origin top-left, y down
    double fontSize = 0; ///< points
    int lines = 1;       ///< the greatest number of lines
    // Of a paragraph.
    double lineDistance = 0; ///< points; 0 means that of the font
    Qt::Alignment alignment = Qt::AlignLeft;
    bool isWhole = true; ///< whether nothing of the paragraph is cut off

    bool operator==(const OverlayLayout &) const = default;
};

/// Lays out the translation of one source line over it. `rect` is the source's place, in pane points. The overlay
/// grows to the right to keep its text on one line, is moved to the left if it would leave the pane, and then grows
/// downwards. It passes its right limit only if its text would be cut off otherwise. Returns nullopt if the source is
/// too small.
std::optional<OverlayLayout> layOutOverlay(OverlayTextMeasurer &measurer, const QString &text,
                                           const OverlayLimits &limits, const QRectF &rect, const QRectF &paneBounds,
                                           const OverlayFontSettings &settings);

/// Lays out the translation of a paragraph over its own area, at the distance of the source's lines and aligned as they
/// are. If the text is too long, it becomes smaller, then grows down to its limit, and is cut off at the least size.
std::optional<OverlayLayout> layOutParagraph(OverlayText &text, const OverlayLimits &limits, const QRectF &rect,
                                             const QRectF &paneBounds, const OverlayFontSettings &settings);

} // namespace lucentra

#pragma once

#include "ScreenCapture.h"

#include <QRectF>

namespace lucentra {

class LocalizationManager;

/// The edge of the pane that a capture leaves out, in points on every side: the border is drawn there.
inline constexpr double captureInset = 2.0;

/// Where the pane is, as the toolkit has it. Rectangles are global points with the origin at the top-left, y down.
struct GlassArea
{
    QRectF glass;             ///< the pane
    QRectF windowFrame;       ///< the pane's window
    quint32 windowNumber = 0; ///< the window system's number of that window

    bool operator==(const GlassArea &) const = default;
};

/// The area to capture in global points. Failures are of the domain "ScreenCapture": -1 the window system doesn't list
/// the pane's window, -2 no display holds the centre of the area, -3 the area isn't whole inside that display.
Result<QRectF> planGlassCapture(const CaptureSurroundings &surroundings, const GlassArea &area,
                                const LocalizationManager &texts);

/// Captures exactly what is beneath the pane. Blocks; any thread. A failure of `capture` itself is passed on unchanged;
/// -4 says that it returned neither an image nor an error.
Result<QImage> captureGlassArea(ScreenCapture &capture, const GlassArea &area, const LocalizationManager &texts);

} // namespace lucentra

#pragma once

#include "ScreenCaptureService.h"

#include <QRectF>

#include <functional>

namespace lucentra {

class LocalizationManager;

/// The edge of the pane that a capture leaves out, in points on every side: the border's line lies there.
inline constexpr double captureInset = 2.0;

/// Where the pane is. Rectangles are global points with the origin at the bottom-left of the main screen, y up.
struct GlassArea
{
    QRectF glass;             ///< the pane
    QRectF windowFrame;       ///< the pane's window
    quint32 windowNumber = 0; ///< the window system's number of that window

    bool operator==(const GlassArea &) const = default;
};

/// What to ask of the service for one capture of the pane's area.
struct GlassCapturePlan
{
    ContentFilter filter;
    QRectF sourceRect; ///< points, origin at the display's top-left corner
};

/// Chooses display, filter and rectangle. Failures are of the domain "ScreenCapture": -1 the pane's window isn't among
/// the content, -2 no display holds the centre of the area, -3 the area isn't whole inside that display.
Result<GlassCapturePlan> planGlassCapture(const ShareableContent &content, const GlassArea &area,
                                          qint64 processIdentifier, const LocalizationManager &texts);

/// The configuration of a screenshot of a rectangle (points) at a scale (pixels per point; below 1 counts as 1).
StreamConfiguration glassCaptureConfiguration(const QRectF &sourceRect, double scale);

/// Captures exactly what lies beneath the pane. The completion runs once, on a thread of the service. A failure of
/// the service itself is passed on unchanged; -4 says that it returned neither an image nor an error. `service` and
/// `texts` must outlive the completion.
void captureGlassArea(ScreenCaptureService &service, const GlassArea &area, const LocalizationManager &texts,
                      std::function<void(Result<QImage>)> completion);

} // namespace lucentra

#pragma once

#include "ScreenCapture.h"

namespace lucentra {

class LocalizationManager;

/// The edge of the pane that a capture leaves out, in points on every side: the border is drawn there.
inline constexpr double captureInset = 2.0;

/// Where the pane is, as the toolkit has it.
struct GlassArea
{
    ScreenRect glass;         ///< the pane
    ScreenRect windowFrame;   ///< the pane's window
    quint32 windowNumber = 0; ///< the window system's number of that window

    bool operator==(const GlassArea &) const = default;
};

/// The area to capture. Failures have the domain "ScreenCapture" and the code -1 if the window system
/// doesn't list the pane's window, -2 if no display contains the centre of the area, -3 if that display doesn't contain
/// the whole area.
Result<ScreenRect> planGlassCapture(const CaptureSurroundings &surroundings, const GlassArea &area,
                                const LocalizationManager &texts);

/// Captures the screen beneath the pane. Blocks; any thread. Passes on failures of `capture` unchanged; the code is -4
/// if it returned neither an image nor an error.
Result<QImage> captureGlassArea(ScreenCapture &capture, const GlassArea &area, const LocalizationManager &texts);

} // namespace lucentra

#pragma once

#include "Result.h"
#include "ScreenRect.h"

#include <QImage>
#include <QList>
#include <QRectF>
#include <QStringView>

#include <optional>

namespace lucentra {

/// Where the pane and the displays are.
struct CaptureSurroundings
{
    std::optional<ScreenRect> paneWindow; ///< nullopt if the window system doesn't list the window
    QList<ScreenRect> displays;           ///< the main one first

    bool operator==(const CaptureSurroundings &) const = default;
};

/// The domain of failures that come from a missing permission. Their description says what the user can do, and a
/// capture after `allowAsking` may succeed.
inline constexpr QStringView screenAccessDomain = u"ScreenAccess";
/// The domain of failures of a desktop that lacks what captures need. Their description says what to install.
inline constexpr QStringView screenServiceDomain = u"ScreenService";

/// Takes pictures of what other programs show on the screen. This program's own windows are never part of them; how
/// that is achieved is up to the implementation. Blocking calls, on any thread, several at once.
class ScreenCapture
{
public:
    virtual ~ScreenCapture() = default;

    /// Whether captures are allowed; never asks the user.
    virtual bool isGranted() const = 0;
    /// Lets the next capture ask the user for the permission, if it is missing. Otherwise captures never ask.
    virtual void allowAsking() {}

    /// The frame of the pane's window, given by the window system's number, as the window system has it at this moment.
    virtual Result<CaptureSurroundings> surroundings(quint32 paneWindow) = 0;

    /// The picture of an area of the display that holds its centre, in that display's pixels, at least
    /// one per point; width and height are rounded up to whole pixels. A null image if the system returned neither an
    /// image nor an error.
    virtual Result<QImage> capture(const ScreenRect &area) = 0;
};

} // namespace lucentra

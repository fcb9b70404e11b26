#pragma once

#include "Result.h"

#include <QImage>
#include <QList>
#include <QRectF>

#include <functional>
#include <optional>

namespace lucentra {

/// A window on the screen. Frames are global points: origin top-left, y down, the main display's corner at its own
/// place in the desktop's arrangement.
struct ShareableWindow
{
    quint32 identifier = 0; ///< the window system's number
    QRectF frame;

    bool operator==(const ShareableWindow &) const = default;
};

struct ShareableDisplay
{
    quint32 identifier = 0; ///< valid within one answer
    QRectF frame;           ///< global points

    bool operator==(const ShareableDisplay &) const = default;
};

struct ShareableApplication
{
    qint64 processIdentifier = 0;

    bool operator==(const ShareableApplication &) const = default;
};

/// What may be captured at this moment.
struct ShareableContent
{
    QList<ShareableWindow> windows;
    QList<ShareableDisplay> displays;
    QList<ShareableApplication> applications;
};

/// What a screenshot shows: one display without some windows, or without whole applications but for some windows.
struct ContentFilter
{
    ShareableDisplay display;
    QList<ShareableWindow> excludedWindows;
    QList<ShareableApplication> excludedApplications;
    QList<ShareableWindow> exceptedWindows;
};

enum class CaptureResolution { Automatic, Best, Nominal };

struct StreamConfiguration
{
    QRectF sourceRect; ///< points, origin at the display's top-left corner
    int width = 0;     ///< pixels of the image
    int height = 0;
    bool showsCursor = false;
    CaptureResolution captureResolution = CaptureResolution::Automatic;

    bool operator==(const StreamConfiguration &) const = default;
};

/// Takes pictures of the screen without this program's own windows in them. Operations may be called on any thread;
/// completions arrive on a thread of the service, once each, and must not block it.
class ScreenCaptureService
{
public:
    virtual ~ScreenCaptureService() = default;

    virtual void shareableContent(bool excludingDesktopWindows, bool onScreenWindowsOnly,
                                  std::function<void(Result<ShareableContent>)> completion) = 0;
    /// Pixels per point of what a filter shows.
    virtual double pointPixelScale(const ContentFilter &filter) const = 0;
    /// An image of the configured size, or a failure; a null image where the system returned neither.
    virtual void screenshot(const ContentFilter &filter, const StreamConfiguration &configuration,
                            std::function<void(Result<QImage>)> completion) = 0;
};

/// Whether this program may see the screen at all.
class ScreenCaptureAccess
{
public:
    virtual ~ScreenCaptureAccess() = default;

    /// True when captures are allowed; never asks the user.
    virtual bool isGranted() const = 0;
    /// Has the system ask the user.
    virtual void request() = 0;
};

} // namespace lucentra

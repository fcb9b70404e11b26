#pragma once

#include "ScreenCaptureService.h"
#include "X11Composer.h"

#include <QThreadPool>

#include <memory>
#include <mutex>
#include <utility>

namespace lucentra {

/// A display as both sides know it: the window system in native pixels, the program in points. A display's corner is
/// the same number in both; its size and everything on it is scaled.
struct X11Display
{
    QRect nativeFrame;
    double scale = 1; ///< pixels per point

    QRectF frame() const { return {QPointF(nativeFrame.topLeft()), QSizeF(nativeFrame.size()) / scale}; }
    QPointF toPoints(QPointF native) const { return (native - nativeFrame.topLeft()) / scale + nativeFrame.topLeft(); }
    bool operator==(const X11Display &) const = default;
};

/// Screen capture on an X server: the windows beneath the pane are composed from their own pixmaps, so that the pane
/// never needs to be hidden. One worker thread, one private connection; made at the first use.
class X11ScreenCapture : public ScreenCaptureService
{
public:
    /// `ours` are the resource ids of the connection that this program's windows are made on.
    explicit X11ScreenCapture(X11ResourceRange ours);
    ~X11ScreenCapture() override;

    /// The displays as they are now, the main one first. Any thread; call again when they change.
    void setDisplays(QList<X11Display> displays);
    /// Whether the pane is shown; only then windows are redirected. Any thread.
    void setPaneShown(bool shown);

    /// For servers that don't have every program's windows: a screenshot that no other program's window is in fails,
    /// with this sentence for the user. Asked for on the worker. Set before the first screenshot.
    void explainNothingBeneath(std::function<QString()> sentence) { m_nothingBeneath = std::move(sentence); }

    void shareableContent(bool excludingDesktopWindows, bool onScreenWindowsOnly,
                          std::function<void(Result<ShareableContent>)> completion) override;
    double pointPixelScale(const ContentFilter &filter) const override;
    void screenshot(const ContentFilter &filter, const StreamConfiguration &configuration,
                    std::function<void(Result<QImage>)> completion) override;

private:
    QList<X11Display> displays() const;
    X11Composer &composer(); // on the worker only

    const X11ResourceRange m_ours;
    mutable std::mutex m_mutex;
    QList<X11Display> m_displays; // guarded by m_mutex
    std::function<QString()> m_nothingBeneath;
    std::unique_ptr<X11Composer> m_composer;
    QThreadPool m_worker; // last: its destruction waits for what uses the rest
};

/// Every program on an X server may see the screen.
class X11CaptureAccess : public ScreenCaptureAccess
{
public:
    bool isGranted() const override { return true; }
    void request() override {}
};

} // namespace lucentra

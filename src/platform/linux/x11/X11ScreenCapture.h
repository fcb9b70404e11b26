#pragma once

#include "ScreenCapture.h"
#include "X11Composer.h"

#include <QThreadPool>

#include <atomic>
#include <functional>
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

    ScreenRect frame() const { return {QPointF(nativeFrame.topLeft()), QSizeF(nativeFrame.size()) / scale}; }
    QPointF toPoints(QPointF native) const { return (native - nativeFrame.topLeft()) / scale + nativeFrame.topLeft(); }
    bool operator==(const X11Display &) const = default;
};

/// Screen capture on an X server: the windows beneath the pane are composed from their own pixmaps, so that the pane
/// never needs to be hidden. One private connection, made at the first use.
class X11ScreenCapture : public ScreenCapture
{
public:
    /// `ours` are the resource ids of the connection that this program's windows are made on.
    explicit X11ScreenCapture(X11ResourceRange ours);

    /// The displays as they are now, the main one first. Any thread; call again when they change.
    void setDisplays(QList<X11Display> displays);
    /// The display with a point (global points); one without a frame if there is none. Any thread.
    X11Display displayAt(const QPointF &point) const;
    /// Whether the pane is shown; only then windows are redirected. Any thread, never blocks.
    void setPaneShown(bool shown);

    /// The sentence for the user if the server lacks extensions that captures need, from their names.
    void explainMissing(std::function<QString(const QString &)> sentence) { m_missing = std::move(sentence); }

    bool isGranted() const override { return true; } ///< no X server withholds its screen
    Result<CaptureSurroundings> surroundings(quint32 paneWindow) override;
    Result<QImage> capture(const ScreenRect &area) override;

private:
    QList<X11Display> displays() const;
    X11Composer &preparedComposer();
    Failure unusable() const;

    const X11ResourceRange m_ours;
    mutable std::mutex m_displaysMutex;
    QList<X11Display> m_displays; ///< guarded by m_displaysMutex
    std::function<QString(const QString &)> m_missing;
    std::atomic<bool> m_isPaneShown = false;
    std::mutex m_composing; ///< the composer serves one thread at a time
    std::unique_ptr<X11Composer> m_composer;
    QThreadPool m_worker; ///< last member: its destructor waits for running tasks
};

} // namespace lucentra

#pragma once

#include "ScreenCapture.h"
#include "ScreenStream.h"
#include "Screencopy.h"

#include <QObject>

#include <mutex>

namespace lucentra {

class LayerPaneHints;

/// Captures what is beneath the pane, which is invisible for one frame meanwhile.
class LayerScreenCapture : public QObject, public ScreenCapture, public ScreenStream
{
public:
    LayerScreenCapture(WaylandConnection &connection, LayerPaneHints &pane);

    bool isGranted() const override { return true; }
    Result<CaptureSurroundings> surroundings(quint32 paneWindow) override;
    Result<QImage> capture(const ScreenRect &area) override;

    /// What is beneath the pane is only known from captures, so there is a frame after each of these, and an empty one
    /// for a new area.
    void follow(const ScreenRect &area, std::function<void(const ScreenFrame &)> frame) override;

private:
    QImage screencopyPicture(const QRect &area);
    QImage kwinPicture(const QRect &area);
    void report(const QRect &area, const QImage &picture);
    void updateDisplays();
    void reveal();

    LayerPaneHints &m_pane;
    std::mutex m_capturing; ///< one picture at a time
    Screencopy m_screencopy;
    std::mutex m_displaysMutex;
    QList<ScreenRect> m_displays; ///< guarded by m_displaysMutex
    ScreenRect m_followed;
    std::function<void(const ScreenFrame &)> m_frame;
};

} // namespace lucentra

#pragma once

#include "CompositorMoves.h"
#include "DesktopHotkeys.h"
#include "MainQueue.h"
#include "PortalScreenCapture.h"
#include "ScreenStream.h"
#include "X11Desktop.h"

namespace lucentra {

/// The picture beneath the pane, as the last capture has found it. There is none after the pane has moved, since the
/// screen is only shared for the time of a capture.
class PortalScreenStream : public ScreenStream
{
public:
    PortalScreenStream(PortalScreenCapture &capture, MainQueue &mainQueue);

    void follow(const ScreenRect &area, std::function<void(const ScreenFrame &)> frame) override;

private:
    PortalScreenCapture &m_capture;
    MainQueue &m_mainQueue;
    ScreenRect m_area;
    std::function<void(const ScreenFrame &)> m_frame;
    QObject m_alive; ///< context of what is posted
};

/// The pane as an X11 window on a compositor of Wayland. It follows the pointer by itself when it is dragged: during a
/// drag by the compositor, the X server learns of the release only when the pointer moves again.
class PortalPaneHints : public X11PaneWindowHints
{
public:
    bool startMove(QWindow &) override { return false; }
    bool startResize(QWindow &, Qt::Edges) override { return false; }
    void setHoldHandler(const QWindow &window, std::function<void(bool)> handler) override;

private:
    CompositorMoves m_moves;
};

/// A desktop of Wayland on which the pane is an X11 window. The screen is captured through the desktop's portal.
class PortalDesktop : public Desktop
{
public:
    /// `localized` looks up a text key in the interface language.
    PortalDesktop(Scheduler &scheduler, SessionBus &bus, MainQueue &mainQueue, const ScreenShareStore &store,
                  const std::function<QString(const QString &)> &localized);

    ScreenCapture &capture() override { return m_capture; }
    ScreenStream &stream() override { return m_stream; }
    GlobalHotkeys &hotkeys() override { return m_hotkeys; }
    PaneWindowHints &windows() override { return m_hints; }
    bool isComposited() const override { return m_windows.isComposited(); }
    void setCompositedHandler(std::function<void(bool)> changed) override
    {
        m_windows.setCompositedHandler(std::move(changed));
    }
    bool hasTray() const override { return m_windows.hasTray(); }

private:
    PortalScreenCapture::Pane pane();

    X11Desktop m_windows;
    DesktopHotkeys m_hotkeys;
    PortalPaneHints m_hints;
    PortalScreenCapture m_capture;
    PortalScreenStream m_stream;
};

} // namespace lucentra

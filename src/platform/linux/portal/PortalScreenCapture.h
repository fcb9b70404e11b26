#pragma once

#include "ScreenCapture.h"
#include "ScreenShares.h"
#include "X11ScreenCapture.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>

namespace lucentra {

/// What to say where the desktop shares no screens, with the command that installs it. `localized` looks up a text key.
QString missingSharingText(const std::function<QString(const QString &)> &localized);

/// Screen capture by the desktop's portal: the monitor with the pane is shared for the time of a capture. The pane is
/// made invisible until a frame without it has arrived.
class PortalScreenCapture : public ScreenCapture
{
public:
    /// This program's windows, as long as they are invisible.
    struct Hidden
    {
        std::chrono::steady_clock::time_point begun; ///< before they began to vanish
        std::chrono::steady_clock::time_point since;
        std::shared_ptr<void> shownAgain; ///< they are, once it is destroyed
    };

    /// What the window system knows of the pane and its surroundings. Called on the capturing thread.
    struct Pane
    {
        std::function<Result<CaptureSurroundings>(quint32 window)> surroundings;
        /// The display with a point (global points).
        std::function<X11Display(const QPointF &)> displayAt;
        /// Makes this program's windows over an area (native pixels) invisible. At least one frame must follow the time
        /// since which they are.
        std::function<Hidden(const QRect &)> hide;
        /// Makes room for the desktop's question until the returned object is destroyed.
        std::function<std::shared_ptr<void>(quint32 window)> makeRoom;
        /// The window's name for the portal, so that the question belongs to it.
        std::function<QString(quint32 window)> portalName;
    };

    /// `localized` looks up a text key in the interface language.
    PortalScreenCapture(Pane pane, ScreenShareStore store, std::function<QString(const QString &)> localized);

    /// Whether the user has allowed the capture of a monitor.
    bool isGranted() const override;
    void allowAsking() override { m_mayAsk = true; }
    Result<CaptureSurroundings> surroundings(quint32 paneWindow) override;
    Result<QImage> capture(const ScreenRect &area) override;

    /// The area (global points) whose picture is wanted from each capture besides its own; may be empty. `taken` is
    /// called on the capturing thread. Any thread.
    void alsoTake(const ScreenRect &area, std::function<void(const QImage &)> taken);
    /// Ends a capture under way, and the question of the desktop with it. Any thread.
    void cancel();

private:
    class Running;

    tl::unexpected<Failure> failure(int code, const QString &key) const;
    Result<QImage> captureFrom(Running &running, const ScreenRect &area);

    const Pane m_pane;
    const std::function<QString(const QString &)> m_localized;
    mutable std::mutex m_storeMutex;
    ScreenShares m_shares;    ///< guarded by m_storeMutex, as are the next
    QList<ScreenRect> m_displays; ///< at the last look
    std::atomic<bool> m_mayAsk = false;
    std::atomic<bool> m_wasRefused = false;
    std::atomic<quint32> m_paneWindow = 0;
    std::mutex m_capturing; ///< one share at a time
    std::mutex m_runningMutex;
    Running *m_running = nullptr; ///< guarded by m_runningMutex, as are the next two
    ScreenRect m_alsoArea;
    std::function<void(const QImage &)> m_alsoTaken;
};

} // namespace lucentra

#pragma once

#include "Scheduler.h"

#include <QRect>

#include <functional>
#include <memory>

namespace lucentra {

/// Finds out which moves and resizes of the pane's window were made by the user, and reports their beginnings and ends.
///
/// The window's rectangle also changes when it is first shown, and by window managers and displays. Such a change must
/// not count, since after a move by the user the text beneath the pane is sent to a service. A change counts if the
/// user is holding the shown window, by its body or edge or by means of the window manager.
class UserMoveTracker
{
public:
    /// The interval for polling the pointer's buttons, since no event reports a release during another client's grab.
    static constexpr std::chrono::milliseconds pollInterval{40};
    /// The longest time after the release until the window manager reports the window's new place. Some report it only
    /// at the end of a drag.
    static constexpr std::chrono::milliseconds answerPatience{600};

    struct Surroundings
    {
        std::function<bool()> isButtonDown;
        std::function<QRect()> frame;   ///< the window's, points on the screen
        std::function<void()> held;     ///< called repeatedly while the window is dragged; may be empty
        std::function<void()> released; ///< called once after the release of the button; may be empty
    };

    struct Reports
    {
        /// The user has taken hold of the window; one of the other two follows. May be called again before that.
        std::function<void()> began;
        /// The user has let go of the window, and has not moved it.
        std::function<void()> unchanged;
        /// A move or resize has ended with another rectangle. The argument is the time since the release.
        std::function<void(std::chrono::milliseconds)> moved;
    };

    UserMoveTracker(Scheduler &scheduler, Surroundings surroundings, Reports reports);

    void windowShown();
    void windowHidden();
    /// The user takes hold of the window by its body or edge, or asks for another rectangle by the zoom button.
    void grabbed();
    /// The window manager reports the beginning or end of a hold: a pressed button over the window or a key that moves
    /// it. Most of them move nothing.
    void held(bool isHeld);
    /// The window's rectangle has changed, for whatever reason.
    void frameChanged();

private:
    void begin(const QRect &from);
    void poll();
    void letGo();

    Scheduler &m_scheduler;
    const Surroundings m_surroundings;
    const Reports m_reports;
    std::unique_ptr<ScheduledTask> m_poll;
    std::unique_ptr<ScheduledTask> m_answerEnds; ///< while it runs, a change still counts as part of the last hold
    bool m_isShown = false;
    bool m_isHeld = false;
    bool m_isTracking = false;
    bool m_isReleased = false; ///< the button was released; only the window's last place is awaited
    QRect m_start;
    QRect m_lastFrame;
    QRect m_lastSeen;                      ///< at the last poll
    std::chrono::milliseconds m_waited{0}; ///< since the first poll without a pressed button
};

} // namespace lucentra

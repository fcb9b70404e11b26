#pragma once

#include "Scheduler.h"

#include <QRect>

#include <functional>
#include <memory>

namespace lucentra {

/// Finds out which moves and resizes of the pane's window are the user's own, and reports when one begins and ends.
///
/// The window's rectangle also changes when it is first shown, and by window managers and displays; such a change must
/// not count, since what lies beneath the pane is sent out after the user's own moves. A change counts when the user
/// has taken hold of the shown window, by its body or edge, or by means of the window manager.
class UserMoveTracker
{
public:
    /// Between two looks at the pointer's buttons; a window system doesn't tell who has a foreign grab.
    static constexpr std::chrono::milliseconds lookInterval{40};
    /// How long, with no button held, a window manager may take to put the window where it was dragged or asked to
    /// be. Some tell a window of its place only when the drag is over.
    static constexpr std::chrono::milliseconds answerPatience{600};

    struct Surroundings
    {
        std::function<bool()> isButtonDown;
        std::function<QRect()> frame;   ///< the window's, points on the screen
        std::function<void()> held;     ///< called again and again while the window is dragged; may be empty
        std::function<void()> released; ///< called once the button isn't down any more; may be empty
    };

    /// Called on the main thread.
    struct Reports
    {
        /// The user has taken hold of the window; one of the other two follows. May be called again before that.
        std::function<void()> began;
        /// The user has let go of the window, and has not moved it.
        std::function<void()> unchanged;
        /// A move or resize has ended with another rectangle than it began; the user let go of the window so long ago.
        std::function<void(std::chrono::milliseconds)> moved;
    };

    UserMoveTracker(Scheduler &scheduler, Surroundings surroundings, Reports reports);

    void windowShown();
    void windowHidden();
    /// The user takes hold of the window by its body or edge.
    void grabbed();
    /// The user has taken hold of the window as a window manager sees it, or has let go: a press of a button over it,
    /// or a key that moves it. Most such holds move nothing.
    void held(bool isHeld);
    /// The user asked for another rectangle without holding a button: the zoom button.
    void requested();
    /// The window's rectangle has changed, for whatever reason.
    void frameChanged();

private:
    void begin(const QRect &from);
    void look();
    void letGo();

    Scheduler &m_scheduler;
    const Surroundings m_surroundings;
    const Reports m_reports;
    std::unique_ptr<ScheduledTask> m_look;
    std::unique_ptr<ScheduledTask> m_answerEnds; ///< until when a change may be the answer to a hold that has ended
    bool m_isShown = false;
    bool m_isHeld = false;
    bool m_isTracking = false;
    bool m_isReleased = false; ///< the drag that is tracked has ended, but for the window's last place
    QRect m_start;
    QRect m_lastFrame;
    QRect m_lastSeen;                        ///< at the last look
    std::chrono::milliseconds m_waited{0};   ///< since the first look without a button down
};

} // namespace lucentra

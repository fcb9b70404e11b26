#pragma once

#include "Scheduler.h"

#include <QObject>

#include <functional>
#include <memory>

namespace lucentra {

/// Reports when the pane's window has lost the keyboard focus to another window.
///
/// A held hotkey, a dragged window and an open menu take the focus only for a moment. The toolkit reports such a loss
/// too, but doesn't report when it becomes permanent. Therefore the window system is asked again and again while the
/// toolkit regards the focus as lost.
class AutoHide : public QObject
{
public:
    static constexpr std::chrono::milliseconds pollInterval{60};

    struct Surroundings
    {
        std::function<bool()> isPaneActive;   ///< as the toolkit sees it
        std::function<bool()> hasInputFocus;  ///< as the window system sees it
        std::function<bool()> isPointerInUse; ///< a button of the pointer is down, or a menu is open
    };

    /// Calls `lost` once per loss.
    AutoHide(Scheduler &scheduler, Surroundings surroundings, std::function<void()> lost);

    /// To be called whenever the toolkit reports that another window, or none, has the focus.
    void focusChanged();

private:
    void poll();

    Scheduler &m_scheduler;
    const Surroundings m_surroundings;
    const std::function<void()> m_lost;
    std::unique_ptr<ScheduledTask> m_poll;
    bool m_wasActive = false;
};

} // namespace lucentra

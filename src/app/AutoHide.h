#pragma once

#include "Scheduler.h"

#include <QObject>

#include <functional>
#include <memory>

namespace lucentra {

/// Tells when the pane's window has really lost the keys to another window.
///
/// A held hotkey, a dragged window and an open menu take the keys from a window only for the moment; the toolkit then
/// reports a loss all the same, and nothing when it becomes a real one. So that the window system itself is asked, for
/// as long as the toolkit thinks that the keys are gone.
class AutoHide : public QObject
{
public:
    static constexpr std::chrono::milliseconds lookInterval{60};

    struct Surroundings
    {
        std::function<bool()> isPaneActive;   ///< as the toolkit sees it
        std::function<bool()> hasInputFocus;  ///< as the window system sees it
        std::function<bool()> isPointerInUse; ///< a button of the pointer is down, or a menu is open
    };

    /// `lost` is called on the main thread, once for each loss.
    AutoHide(Scheduler &scheduler, Surroundings surroundings, std::function<void()> lost);

    /// To be called whenever the toolkit reports that another window, or none, has the focus.
    void focusChanged();

private:
    void look();

    Scheduler &m_scheduler;
    const Surroundings m_surroundings;
    const std::function<void()> m_lost;
    std::unique_ptr<ScheduledTask> m_look;
    bool m_wasActive = false;
};

} // namespace lucentra

#include "AutoHide.h"

#include <utility>

namespace lucentra {

AutoHide::AutoHide(Scheduler &scheduler, Surroundings surroundings, std::function<void()> lost)
    : m_scheduler(scheduler)
    , m_surroundings(std::move(surroundings))
    , m_lost(std::move(lost))
{
}

void AutoHide::focusChanged()
{
    const bool isActive = m_surroundings.isPaneActive();
    if (std::exchange(m_wasActive, isActive) && !isActive)
        m_poll = m_scheduler.after(pollInterval, [this] { poll(); });
}

void AutoHide::poll()
{
    if (m_surroundings.isPaneActive())
        return;
    if (m_surroundings.hasInputFocus() || m_surroundings.isPointerInUse())
        m_poll = m_scheduler.after(pollInterval, [this] { poll(); });
    else
        m_lost();
}

} // namespace lucentra

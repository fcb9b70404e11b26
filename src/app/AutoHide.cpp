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
        m_look = m_scheduler.after(lookInterval, [this] { look(); });
}

void AutoHide::look()
{
    if (m_surroundings.isPaneActive())
        return;
    if (m_surroundings.hasInputFocus() || m_surroundings.isPointerInUse())
        m_look = m_scheduler.after(lookInterval, [this] { look(); });
    else
        m_lost();
}

} // namespace lucentra

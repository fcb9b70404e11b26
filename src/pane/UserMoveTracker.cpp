#include "UserMoveTracker.h"

#include <utility>

namespace lucentra {

UserMoveTracker::UserMoveTracker(Scheduler &scheduler, Surroundings surroundings, std::function<void()> moved)
    : m_scheduler(scheduler)
    , m_surroundings(std::move(surroundings))
    , m_moved(std::move(moved))
{
}

void UserMoveTracker::windowShown()
{
    m_lastFrame = m_surroundings.frame();
    m_heldSinceShown = m_surroundings.isButtonDown();
    if (m_heldSinceShown)
        lookForRelease();
}

void UserMoveTracker::windowHidden()
{
    m_isTracking = false;
    m_look.reset();
}

void UserMoveTracker::grabbed()
{
    begin(m_surroundings.frame());
}

void UserMoveTracker::requested()
{
    begin(m_surroundings.frame());
}

void UserMoveTracker::frameChanged()
{
    const QRect before = std::exchange(m_lastFrame, m_surroundings.frame());
    if (!m_isTracking && !m_heldSinceShown && m_lastFrame != before && m_surroundings.isButtonDown())
        begin(before);
}

void UserMoveTracker::begin(const QRect &from)
{
    m_isTracking = true;
    m_heldSinceShown = false;
    m_start = from;
    m_lastSeen = {};
    m_patience = answerPatience;
    m_look = m_scheduler.after(lookInterval, [this] { look(); });
}

void UserMoveTracker::look()
{
    const QRect frame = m_surroundings.frame();
    bool hasEnded = false;
    if (m_surroundings.isButtonDown()) {
        m_lastSeen = {};
        if (m_surroundings.held)
            m_surroundings.held();
    } else {
        // After the release the window's last place may still be on its way: two looks must see the same, and the
        // place that it began at only counts once a slow window manager has had its time.
        const bool isResting = std::exchange(m_lastSeen, frame) == frame;
        m_patience -= lookInterval;
        hasEnded = isResting && (frame != m_start || m_patience.count() <= 0);
    }
    if (!hasEnded) {
        m_look = m_scheduler.after(lookInterval, [this] { look(); });
        return;
    }
    m_isTracking = false;
    m_lastFrame = frame;
    if (frame != m_start)
        m_moved();
}

void UserMoveTracker::lookForRelease()
{
    m_look = m_scheduler.after(lookInterval, [this] {
        m_heldSinceShown = m_surroundings.isButtonDown();
        if (m_heldSinceShown)
            lookForRelease();
    });
}

} // namespace lucentra

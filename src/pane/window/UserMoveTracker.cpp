#include "UserMoveTracker.h"

#include <utility>

namespace lucentra {

UserMoveTracker::UserMoveTracker(Scheduler &scheduler, Surroundings surroundings, Reports reports)
    : m_scheduler(scheduler)
    , m_surroundings(std::move(surroundings))
    , m_reports(std::move(reports))
{
}

void UserMoveTracker::windowShown()
{
    m_isShown = true;
    m_lastFrame = m_surroundings.frame();
}

void UserMoveTracker::windowHidden()
{
    const bool wasHeld = m_isHeld || m_isTracking;
    m_isShown = m_isHeld = m_isTracking = false;
    m_poll.reset();
    m_answerEnds.reset();
    if (wasHeld)
        m_reports.unchanged();
}

void UserMoveTracker::held(bool isHeld)
{
    if (!m_isShown || isHeld == m_isHeld)
        return;
    m_isHeld = isHeld;
    m_answerEnds = isHeld ? nullptr : m_scheduler.after(answerPatience, [this] { m_answerEnds.reset(); });
    if (m_isTracking && !isHeld)
        poll(); // the first notice of the release
    else if (!m_isTracking && !isHeld)
        m_reports.unchanged();
    else if (m_surroundings.isButtonDown()) // some window managers report a drag only when it is over
        m_reports.began();
}

void UserMoveTracker::grabbed()
{
    begin(m_surroundings.frame());
}

void UserMoveTracker::frameChanged()
{
    const QRect before = std::exchange(m_lastFrame, m_surroundings.frame());
    if (!m_isTracking && (m_isHeld || m_answerEnds) && m_lastFrame != before)
        begin(before);
}

void UserMoveTracker::begin(const QRect &from)
{
    m_isTracking = true;
    m_isReleased = false;
    m_start = from;
    m_lastSeen = {};
    m_waited = std::chrono::milliseconds::zero();
    m_reports.began();
    m_poll = m_scheduler.after(pollInterval, [this] { poll(); });
}

void UserMoveTracker::poll()
{
    const QRect frame = m_surroundings.frame();
    bool hasEnded = false;
    if (m_isHeld || m_surroundings.isButtonDown()) {
        m_lastSeen = {};
        m_waited = std::chrono::milliseconds::zero();
        if (m_surroundings.held)
            m_surroundings.held();
    } else {
        letGo();
        // The window's last place may arrive after the release: two polls must see the same place, and the place of the
        // start counts only after a slow window manager has had time to answer.
        if (!m_lastSeen.isNull())
            m_waited += pollInterval;
        const bool isResting = std::exchange(m_lastSeen, frame) == frame;
        hasEnded = isResting && (frame != m_start || m_waited >= answerPatience);
    }
    if (!hasEnded) {
        m_poll = m_scheduler.after(pollInterval, [this] { poll(); });
        return;
    }
    m_isTracking = false;
    m_lastFrame = frame;
    if (frame != m_start)
        m_reports.moved(m_waited);
    else
        m_reports.unchanged();
}

void UserMoveTracker::letGo()
{
    if (!std::exchange(m_isReleased, true) && m_surroundings.released)
        m_surroundings.released();
}

} // namespace lucentra

#pragma once

#include "Scheduler.h"

#include <list>
#include <utility>

namespace lucentra {

/// A clock that tests push; see `Scheduler`.
class ManualScheduler : public Scheduler
{
public:
    std::unique_ptr<ScheduledTask> after(std::chrono::milliseconds delay, std::function<void()> task) override
    {
        m_pending.push_back({m_now + delay, std::move(task), m_nextIdentifier});
        return std::make_unique<Handle>(*this, m_nextIdentifier++);
    }

    /// Lets time pass; tasks run in the order of their times.
    void advance(std::chrono::milliseconds duration)
    {
        const auto end = m_now + duration;
        for (;;) {
            auto next = m_pending.end();
            for (auto each = m_pending.begin(); each != m_pending.end(); ++each) {
                if (each->time <= end && (next == m_pending.end() || each->time < next->time))
                    next = each;
            }
            if (next == m_pending.end())
                break;
            m_now = next->time;
            const auto task = std::move(next->task);
            m_pending.erase(next);
            task();
        }
        m_now = end;
    }

    bool isIdle() const { return m_pending.empty(); }

private:
    struct Pending
    {
        std::chrono::milliseconds time;
        std::function<void()> task;
        int identifier;
    };

    class Handle : public ScheduledTask
    {
    public:
        Handle(ManualScheduler &scheduler, int identifier)
            : m_scheduler(scheduler)
            , m_identifier(identifier)
        {
        }
        ~Handle() override
        {
            m_scheduler.m_pending.remove_if([this](const Pending &each) { return each.identifier == m_identifier; });
        }

    private:
        ManualScheduler &m_scheduler;
        const int m_identifier;
    };

    std::chrono::milliseconds m_now{0};
    std::list<Pending> m_pending;
    int m_nextIdentifier = 0;
};

} // namespace lucentra

#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace lucentra {

/// A task that waits for its time. Destroying it cancels the task; once the task has run it does nothing.
class ScheduledTask
{
public:
    virtual ~ScheduledTask() = default;
};

/// Runs tasks later, on the main thread. Whatever waits for a while goes through it, so that tests can push the clock.
class Scheduler
{
public:
    virtual ~Scheduler() = default;

    /// Runs the task once after the delay, unless the returned handle goes first. A task may destroy its own handle.
    [[nodiscard]] virtual std::unique_ptr<ScheduledTask> after(std::chrono::milliseconds delay,
                                                               std::function<void()> task) = 0;
};

/// The event loop's own clock.
class EventLoopScheduler : public Scheduler
{
public:
    std::unique_ptr<ScheduledTask> after(std::chrono::milliseconds delay, std::function<void()> task) override;
};

} // namespace lucentra

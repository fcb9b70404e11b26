#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace lucentra {

/// A task that waits to run. Destroying it cancels the task, or does nothing if the task has run.
class ScheduledTask
{
public:
    virtual ~ScheduledTask() = default;
};

/// Runs tasks later, on the main thread. All delays go through it, so that tests can use a clock of their own.
class Scheduler
{
public:
    virtual ~Scheduler() = default;

    /// Runs the task once after the delay, unless the returned handle is destroyed before. A task may destroy its own
    /// handle.
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

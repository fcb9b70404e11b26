#pragma once

#include "GObjectPointer.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace lucentra {

/// A thread that makes blocking GLib calls for other threads, with a time limit per call.
///
/// Calls run one after the other. When its time is up, a call is cancelled through its cancellable, or skipped if it
/// has not begun. It must return soon after that, since the next calls wait for it. The thread has a main context of
/// its own for what GLib delivers to a context.
class DeadlineThread
{
public:
    /// `atEnd` runs last on the thread, to release objects that belong to it.
    explicit DeadlineThread(std::function<void()> atEnd);
    /// Cancels the running call and waits for it.
    ~DeadlineThread();

    /// Returns the function's result, or nullopt if it doesn't return within the limit. Any thread but this one. The
    /// function may still run for a moment after its cancellation, so it must capture values, not references.
    template <typename Answer>
    std::optional<Answer> call(std::chrono::milliseconds limit, std::function<Answer(GCancellable *)> function)
    {
        auto answer = std::make_shared<std::promise<Answer>>();
        std::future<Answer> future = answer->get_future();
        const auto task = enqueue(
            [answer, function = std::move(function)](GCancellable *cancel) { answer->set_value(function(cancel)); });
        if (future.wait_for(limit) == std::future_status::ready)
            return future.get();
        g_cancellable_cancel(task->cancellable.get());
        return std::nullopt;
    }

    /// Runs a function after the calls before it, without waiting for it.
    void post(std::function<void(GCancellable *)> function) { enqueue(std::move(function)); }

private:
    struct Task
    {
        std::function<void(GCancellable *)> run;
        GObjectPointer<GCancellable> cancellable{g_cancellable_new()};
    };

    std::shared_ptr<Task> enqueue(std::function<void(GCancellable *)> function);
    void run();

    const std::function<void()> m_atEnd;
    std::mutex m_mutex;
    std::condition_variable m_hasWork;
    std::deque<std::shared_ptr<Task>> m_tasks; // guarded by m_mutex
    std::shared_ptr<Task> m_current;           // guarded by m_mutex
    bool m_isEnding = false;                   // guarded by m_mutex
    std::thread m_thread;
};

} // namespace lucentra

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

/// One thread that makes blocking GLib calls for others, who wait for each only so long.
///
/// The calls run one after the other. A call whose time is up is cancelled through its cancellable, and skipped where
/// it has not begun; it must return soon then, since the next ones wait for it. The thread has a main context of its
/// own, so that what GLib delivers to a context stays on it.
class DeadlineThread
{
public:
    /// `atEnd` is the last thing that runs on the thread, for what has to be let go where GLib knows it.
    explicit DeadlineThread(std::function<void()> atEnd);
    /// Cancels what runs and waits for its end.
    ~DeadlineThread();
    DeadlineThread(const DeadlineThread &) = delete;
    DeadlineThread &operator=(const DeadlineThread &) = delete;

    /// What the function returned, or nothing when it did not within the limit. Any thread but its own. The function
    /// may outlive the call by the time that its cancellation takes, so it holds values, no references.
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

    /// Runs a function when the calls before it are through, without waiting for it.
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

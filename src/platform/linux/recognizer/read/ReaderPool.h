#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace lucentra {

/// The threads that read lines.
class ReaderPool
{
public:
    using Task = std::function<void()>;

    /// Starts `workers` threads. `rest` is called on one of them once no task has come for `keep`.
    ReaderPool(int workers, std::chrono::milliseconds keep, Task rest);
    /// Waits for the tasks under way; those that haven't begun are dropped.
    ~ReaderPool();

    /// Any thread.
    void post(Task task);

    int workers() const { return int(m_threads.size()); }

private:
    void work();

    const std::chrono::milliseconds m_keep;
    const Task m_rest;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<Task> m_tasks;
    int m_underWay = 0;
    std::chrono::steady_clock::time_point m_lastWork;
    bool m_isResting = true;
    bool m_isStopping = false;
    std::vector<std::thread> m_threads;
};

} // namespace lucentra

#pragma once

#include "LineReader.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace lucentra {

/// The threads that read lines, each with engines of its own (they share nothing and aren't re-entrant).
class ReaderPool
{
public:
    using Task = std::function<void(LineReader &)>;

    /// Starts `workers` threads; their engines are made on first need and freed after `keep` without a task.
    ReaderPool(int workers, std::chrono::milliseconds keep);
    /// Waits for the tasks under way; those that haven't begun are dropped.
    ~ReaderPool();

    /// Any thread. The task gets a reader whose models' word lists weigh in, or one whose don't.
    void post(bool usesLanguageCorrection, Task task);

    int workers() const { return int(m_threads.size()); }

private:
    struct Job
    {
        bool usesLanguageCorrection;
        Task task;
    };

    void work();

    const std::chrono::milliseconds m_keep;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<Job> m_jobs;
    bool m_isStopping = false;
    std::vector<std::thread> m_threads;
};

} // namespace lucentra

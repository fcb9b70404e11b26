#include "ReaderPool.h"

#include <omp.h>

namespace lucentra {

ReaderPool::ReaderPool(int workers, std::chrono::milliseconds keep)
    : m_keep(keep)
{
    for (int i = 0; i < workers; ++i)
        m_threads.emplace_back([this] { work(); });
}

ReaderPool::~ReaderPool()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isStopping = true;
    }
    m_wake.notify_all();
    for (std::thread &thread : m_threads)
        thread.join();
}

void ReaderPool::post(bool usesLanguageCorrection, Task task)
{
    {
        const std::lock_guard lock(m_mutex);
        m_jobs.push_back({usesLanguageCorrection, std::move(task)});
    }
    m_wake.notify_one();
}

void ReaderPool::work()
{
    // The engines would start threads of their own for every line, which costs more than it gains.
    omp_set_max_active_levels(0);
    LineReader correcting(true);
    LineReader literal(false);
    bool isLoaded = false;
    std::unique_lock lock(m_mutex);
    const auto hasWork = [this] { return m_isStopping || !m_jobs.empty(); };
    while (true) {
        if (!isLoaded) {
            m_wake.wait(lock, hasWork);
        } else if (!m_wake.wait_for(lock, m_keep, hasWork)) {
            correcting.release();
            literal.release();
            isLoaded = false;
            continue;
        }
        if (m_isStopping)
            return;
        const Job job = std::move(m_jobs.front());
        m_jobs.pop_front();
        lock.unlock();
        job.task(job.usesLanguageCorrection ? correcting : literal);
        isLoaded = true;
        lock.lock();
    }
}

} // namespace lucentra

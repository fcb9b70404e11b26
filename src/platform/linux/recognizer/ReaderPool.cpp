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

void ReaderPool::post(Task task)
{
    {
        const std::lock_guard lock(m_mutex);
        m_tasks.push_back(std::move(task));
    }
    m_wake.notify_one();
}

void ReaderPool::work()
{
    // The engines would start threads of their own for every line, which costs more than it gains.
    omp_set_max_active_levels(0);
    LineReader reader;
    bool isLoaded = false;
    std::unique_lock lock(m_mutex);
    const auto hasWork = [this] { return m_isStopping || !m_tasks.empty(); };
    while (!m_isStopping) {
        if (!isLoaded) {
            m_wake.wait(lock, hasWork);
        } else if (!m_wake.wait_for(lock, m_keep, hasWork)) {
            reader.release();
            isLoaded = false;
            continue;
        }
        if (m_isStopping)
            break;
        const Task task = std::move(m_tasks.front());
        m_tasks.pop_front();
        lock.unlock();
        task(reader);
        isLoaded = true;
        lock.lock();
    }
}

} // namespace lucentra

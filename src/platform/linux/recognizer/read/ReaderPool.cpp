#include "read/ReaderPool.h"

namespace lucentra {

ReaderPool::ReaderPool(int workers, std::chrono::milliseconds keep, Task rest)
    : m_keep(keep)
    , m_rest(std::move(rest))
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
        m_isResting = false;
    }
    m_wake.notify_one();
}

void ReaderPool::work()
{
    std::unique_lock lock(m_mutex);
    const auto hasWork = [this] { return m_isStopping || !m_tasks.empty(); };
    while (true) {
        const bool isWoken = m_wake.wait_for(lock, m_keep, hasWork);
        if (m_isStopping)
            return;
        if (!isWoken) {
            const bool isQuiet = m_underWay == 0 && std::chrono::steady_clock::now() - m_lastWork >= m_keep;
            if (isQuiet && !m_isResting) {
                m_isResting = true;
                m_rest();
            }
            continue;
        }
        const Task task = std::move(m_tasks.front());
        m_tasks.pop_front();
        ++m_underWay;
        lock.unlock();
        task();
        lock.lock();
        --m_underWay;
        m_lastWork = std::chrono::steady_clock::now();
    }
}

} // namespace lucentra

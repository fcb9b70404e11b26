#include "DeadlineThread.h"

#include <utility>

namespace lucentra {

DeadlineThread::DeadlineThread(std::function<void()> atEnd)
    : m_atEnd(std::move(atEnd))
    , m_thread([this] { run(); })
{
}

DeadlineThread::~DeadlineThread()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
        m_tasks.clear();
        if (m_current)
            g_cancellable_cancel(m_current->cancellable.get());
    }
    m_hasWork.notify_one();
    m_thread.join();
}

std::shared_ptr<DeadlineThread::Task> DeadlineThread::enqueue(std::function<void(GCancellable *)> function)
{
    auto task = std::make_shared<Task>();
    task->run = std::move(function);
    {
        const std::lock_guard lock(m_mutex);
        m_tasks.push_back(task);
    }
    m_hasWork.notify_one();
    return task;
}

void DeadlineThread::run()
{
    GMainContext *context = g_main_context_new();
    g_main_context_push_thread_default(context);
    for (;;) {
        std::shared_ptr<Task> task;
        {
            std::unique_lock lock(m_mutex);
            m_current.reset();
            m_hasWork.wait(lock, [this] { return m_isEnding || !m_tasks.empty(); });
            if (m_isEnding)
                break;
            task = m_tasks.front();
            m_tasks.pop_front();
            m_current = task;
        }
        // Handles signals that have arrived since the last call.
        while (g_main_context_iteration(context, FALSE)) {
        }
        if (!g_cancellable_is_cancelled(task->cancellable.get()))
            task->run(task->cancellable.get());
    }
    m_atEnd();
    while (g_main_context_iteration(context, FALSE)) {
    }
    g_main_context_pop_thread_default(context);
    g_main_context_unref(context);
}

} // namespace lucentra

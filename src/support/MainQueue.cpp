#include "MainQueue.h"

#include <QThread>

#include <utility>

namespace lucentra {

void MainQueue::post(std::function<void()> task)
{
    {
        const std::lock_guard lock(m_mutex);
        m_tasks.push_back(std::move(task));
    }
    QMetaObject::invokeMethod(
        this, [this] { runNext(); }, Qt::QueuedConnection);
}

void MainQueue::post(const QPointer<QObject> &context, std::function<void()> task)
{
    post([context, task = std::move(task)] {
        if (context)
            task();
    });
}

void MainQueue::drain()
{
    Q_ASSERT(QThread::currentThread() == thread());
    while (runNext()) {
    }
}

bool MainQueue::runNext()
{
    std::function<void()> task;
    {
        const std::lock_guard lock(m_mutex);
        if (m_tasks.empty())
            return false;
        task = std::move(m_tasks.front());
        m_tasks.pop_front();
    }
    task();
    return true;
}

} // namespace lucentra

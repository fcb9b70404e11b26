#pragma once

#include <QObject>
#include <QPointer>

#include <deque>
#include <functional>
#include <mutex>

namespace lucentra {

/// A first-in-first-out queue of tasks for the main thread.
///
/// Tasks run on the thread that created the queue, one per turn of the event loop, in the order of posting. A task may
/// post further tasks.
class MainQueue : public QObject
{
public:
    /// Appends a task. Any thread. Tasks that still wait when the queue is destroyed are dropped.
    void post(std::function<void()> task);
    /// The same, unless the context is destroyed before the task's turn.
    void post(const QPointer<QObject> &context, std::function<void()> task);

    /// Runs tasks until none waits, including those that they post. Called when the program quits, so that deferred
    /// work (a history entry) is completed.
    void drain();

private:
    bool runNext();

    std::mutex m_mutex;
    std::deque<std::function<void()>> m_tasks; // guarded by m_mutex
};

} // namespace lucentra

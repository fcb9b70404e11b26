#pragma once

#include <QObject>

#include <deque>
#include <functional>
#include <mutex>

namespace lucentra {

/// The one first-in-first-out queue onto the main thread.
///
/// Workers post what they found; it runs on the thread that made the queue, one task per turn of the event loop, in
/// the order of posting. A task may post further tasks; they run after those that already wait.
class MainQueue : public QObject
{
public:
    explicit MainQueue(QObject *parent = nullptr);
    ~MainQueue() override;

    /// Appends a task. Any thread. The task is dropped unrun when the queue is destroyed first.
    void post(std::function<void()> task);

    /// Runs tasks until none waits, including those that they post. Main thread only; used when the program quits,
    /// so that deferred work (a history entry) still counts.
    void drain();

private:
    bool runNext();

    std::mutex m_mutex;
    std::deque<std::function<void()>> m_tasks; // guarded by m_mutex
};

} // namespace lucentra

#pragma once

#include <QString>
#include <QThreadPool>

#include <atomic>
#include <functional>
#include <utility>

namespace lucentra {

/// A task that runs on a thread of its own when it is requested. Requests that arrive before a run begins cause a
/// single run.
class RequestedTask
{
public:
    /// `name` is that of the thread, for debuggers.
    explicit RequestedTask(std::function<void()> run, const QString &name = {})
        : m_run(std::move(run))
    {
        m_worker.setObjectName(name);
        m_worker.setMaxThreadCount(1);
    }

    /// Any thread.
    void request()
    {
        if (!m_isRequested.exchange(true))
            m_worker.start([this] {
                m_isRequested = false;
                m_run();
            });
    }

    /// Blocks until the requested runs have ended. The destructor does, too.
    void wait() { m_worker.waitForDone(); }

private:
    const std::function<void()> m_run;
    std::atomic<bool> m_isRequested = false;
    QThreadPool m_worker;
};

} // namespace lucentra

#pragma once

#include <QObject>

#include <atomic>
#include <chrono>
#include <thread>

namespace lucentra {

/// Detects when the main thread doesn't return to its event loop in time, for tests. Writes the stack into the file
/// that LUCENTRA_HANG_FILE names, then one line with the duration and how much of it the thread waited for a processor.
/// Does nothing without that variable. Only in builds with LUCENTRA_HANG_WATCH.
class HangWatch
{
public:
    /// Watches until it is destroyed. Needs an application object; one instance at a time.
    HangWatch();
    ~HangWatch();

private:
    using Clock = std::chrono::steady_clock;

    void watch(const std::stop_token &stop);
    bool waitForAnswer(const std::stop_token &stop, Clock::time_point until) const;
    std::chrono::nanoseconds timeWithoutProcessor() const;

    QObject m_mainThread;
    const int m_file;
    const pthread_t m_mainHandle;
    const int m_mainTask;
    std::atomic<quint64> m_asked = 0;
    std::atomic<quint64> m_answered = 0;
    std::jthread m_thread; // last: it uses the others
};

} // namespace lucentra

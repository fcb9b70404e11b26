#pragma once

#include <QObject>

#include <atomic>
#include <chrono>
#include <thread>

namespace lucentra {

/// Notices when the main thread doesn't return to its event loop in time, and writes that into the file that
/// LUCENTRA_HANG_FILE names, a line each with the duration and how much of it the thread only waited for a processor,
/// after the stack on which it was found. Without the variable it does nothing. Only in builds with
/// LUCENTRA_HANG_WATCH: it is for tests.
class HangWatch
{
public:
    /// From then on, until it is destroyed. Main thread, once there is an application object; one at a time.
    HangWatch();
    ~HangWatch();
    HangWatch(const HangWatch &) = delete;
    HangWatch &operator=(const HangWatch &) = delete;

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

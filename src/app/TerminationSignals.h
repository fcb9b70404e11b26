#pragma once

#include <QSocketNotifier>

#include <atomic>
#include <functional>
#include <memory>
#include <thread>

namespace lucentra {

/// Turns SIGTERM, SIGINT and SIGHUP into a call on the main thread, so that the program ends as by its quit command.
/// After the first, another SIGTERM or SIGINT ends the process at once, even if the main thread is blocked.
///
/// Made before any other thread, those of the application object included: the signals are blocked in this one and all
/// that it starts, and a single thread that doesn't block them would be ended by them, and the program with it.
class TerminationSignals
{
public:
    /// `arrived` is called on a thread of this object's own when the first signal arrives, even if the main thread is
    /// blocked.
    explicit TerminationSignals(std::function<void()> arrived = {});
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals &) = delete;
    TerminationSignals &operator=(const TerminationSignals &) = delete;

    /// Once there is an application object. Signals that came before are not lost.
    void listen(std::function<void()> terminate);

    /// From now on SIGTERM and SIGINT end the process at once. SIGHUP doesn't: it follows SIGTERM by itself when a
    /// session ends.
    static void endAtOnce();

private:
    void watch();

    const std::function<void()> m_onArrival;
    const int m_arrived; ///< can be read once the first signal has arrived
    std::atomic<bool> m_isEnding = false;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::thread m_watcher;
};

} // namespace lucentra

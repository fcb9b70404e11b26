#pragma once

#include "Callback.h"

#include <QSocketNotifier>

#include <atomic>
#include <functional>
#include <memory>
#include <thread>

namespace lucentra {

/// Turns SIGTERM, SIGINT and SIGHUP into a call on the main thread, so that the program ends as by its quit command.
/// After the first, another SIGTERM or SIGINT ends the process at once, even if the main thread is blocked.
///
/// Must be made before any other thread, also those of the application object: it blocks the signals in this thread,
/// and new threads inherit that. A signal would end the process if any thread didn't block it.
class TerminationSignals
{
public:
    /// `arrived` is called on a thread of this object's own when the first signal arrives, even if the main thread is
    /// blocked.
    explicit TerminationSignals(std::function<void()> arrived = {});
    ~TerminationSignals();

    /// To be called once there is an application object. Earlier signals aren't lost.
    void listen(std::function<void()> terminate);

    /// From now on SIGTERM and SIGINT end the process at once. SIGHUP doesn't: it follows SIGTERM by itself when a
    /// session ends.
    static void endAtOnce();

private:
    void watch();

    const Callback<> m_onArrival;
    const int m_arrived; ///< can be read once the first signal has arrived
    std::atomic<bool> m_isEnding = false;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::thread m_watcher;
};

} // namespace lucentra

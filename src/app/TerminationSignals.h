#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace lucentra {

/// Turns SIGTERM, SIGINT and SIGHUP into a call on the main thread, so that the program ends as by its quit command.
/// Made before any other thread: the signals are blocked in this one and all that it starts.
class TerminationSignals
{
public:
    explicit TerminationSignals(std::function<void()> terminate);
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals &) = delete;
    TerminationSignals &operator=(const TerminationSignals &) = delete;

private:
    const int m_descriptor;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace lucentra

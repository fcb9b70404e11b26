#include "ProgramEnd.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <utility>

#include <sys/eventfd.h>
#include <sys/time.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace lucentra {

namespace {

using Clock = std::chrono::steady_clock;

/// Longest time for quitting once everything is stored.
constexpr auto longestEnd = 900ms;
/// Longest time for closing the windows, before anything is stored, in seconds: the X server may hang.
constexpr unsigned longestClosing = 5;

// What the signal handlers use.
int arrival = -1; ///< can be read once the first signal has arrived
std::atomic<int> exitCode = 0;
std::atomic<Clock::rep> begun = 0; ///< 0 before the end

void handleSignal(int)
{
    ProgramEnd::begin(0);
    eventfd_write(arrival, 1);
}

} // namespace

ProgramEnd::ProgramEnd()
{
    arrival = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    std::signal(SIGALRM, [](int) { std::_Exit(exitCode); });
    for (const int each : {SIGTERM, SIGINT, SIGHUP})
        std::signal(each, &handleSignal);
}

ProgramEnd::~ProgramEnd()
{
    begin(0); // a signal must not use what is closed here
    alarm(0);
    m_notifier.reset();
    close(arrival);
}

void ProgramEnd::listen(std::function<void()> terminate)
{
    m_notifier = std::make_unique<QSocketNotifier>(arrival, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [notifier = m_notifier.get(), terminate = std::move(terminate)] {
                         notifier->setEnabled(false);
                         terminate();
                     });
}

void ProgramEnd::begin(int code)
{
    Clock::rep notYet = 0;
    if (!begun.compare_exchange_strong(notYet, Clock::now().time_since_epoch().count()))
        return;
    exitCode = code;
    std::signal(SIGTERM, SIG_DFL);
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGHUP, SIG_IGN);
    alarm(longestClosing);
}

void ProgramEnd::beginStoring()
{
    alarm(0);
}

void ProgramEnd::endStoring()
{
    const auto left = Clock::time_point(Clock::duration(begun)) + longestEnd - Clock::now();
    const auto wait = std::max(std::chrono::duration_cast<std::chrono::microseconds>(left), 1us);
    const itimerval timer{.it_interval = {}, .it_value = {.tv_sec = 0, .tv_usec = wait.count()}};
    setitimer(ITIMER_REAL, &timer, nullptr);
}

} // namespace lucentra

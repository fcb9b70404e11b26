#include "TerminationSignals.h"

#include <csignal>
#include <initializer_list>
#include <utility>

#include <sys/eventfd.h>
#include <unistd.h>

namespace lucentra {

namespace {

sigset_t setOf(std::initializer_list<int> signals)
{
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : signals)
        sigaddset(&set, signal);
    return set;
}

} // namespace

TerminationSignals::TerminationSignals(std::function<void()> arrived)
    : m_onArrival(std::move(arrived))
    , m_arrived(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    const sigset_t signals = setOf({SIGTERM, SIGINT, SIGHUP});
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    m_watcher = std::thread([this] { watch(); });
}

void TerminationSignals::watch()
{
    sigset_t awaited = setOf({SIGTERM, SIGINT, SIGHUP});
    int signal = 0;
    while (sigwait(&awaited, &signal) == 0 && !m_isEnding) {
        endAtOnce(); // this thread receives the next one
        awaited = setOf({SIGHUP});
        m_onArrival();
        eventfd_write(m_arrived, 1);
    }
}

void TerminationSignals::listen(std::function<void()> terminate)
{
    m_notifier = std::make_unique<QSocketNotifier>(m_arrived, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [notifier = m_notifier.get(), terminate = std::move(terminate)] {
                         notifier->setEnabled(false);
                         terminate();
                     });
}

void TerminationSignals::endAtOnce()
{
    const sigset_t signals = setOf({SIGTERM, SIGINT});
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

TerminationSignals::~TerminationSignals()
{
    m_notifier.reset();
    m_isEnding = true;
    pthread_kill(m_watcher.native_handle(), SIGHUP); // wakes it
    m_watcher.join();
    close(m_arrived);
}

} // namespace lucentra

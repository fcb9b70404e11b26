#include "TerminationSignals.h"

#include <csignal>
#include <utility>

#include <sys/signalfd.h>
#include <unistd.h>

namespace lucentra {

namespace {

int openDescriptor()
{
    sigset_t signalSet;
    sigemptyset(&signalSet);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        sigaddset(&signalSet, signal);
    pthread_sigmask(SIG_BLOCK, &signalSet, nullptr);
    return signalfd(-1, &signalSet, SFD_CLOEXEC | SFD_NONBLOCK);
}

} // namespace

TerminationSignals::TerminationSignals()
    : m_descriptor(openDescriptor())
{
}

void TerminationSignals::listen(std::function<void()> terminate)
{
    if (m_descriptor < 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [descriptor = m_descriptor, terminate = std::move(terminate)] {
                         signalfd_siginfo information;
                         if (read(descriptor, &information, sizeof information) != sizeof information)
                             return;
                         endAtOnce();
                         terminate();
                     });
}

void TerminationSignals::endAtOnce()
{
    sigset_t signalSet;
    sigemptyset(&signalSet);
    sigaddset(&signalSet, SIGTERM);
    sigaddset(&signalSet, SIGINT);
    pthread_sigmask(SIG_UNBLOCK, &signalSet, nullptr);
}

TerminationSignals::~TerminationSignals()
{
    m_notifier.reset();
    if (m_descriptor >= 0)
        close(m_descriptor);
}

} // namespace lucentra

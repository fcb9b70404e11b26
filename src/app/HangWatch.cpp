#include "HangWatch.h"

#include <array>
#include <cstdio>

#include <csignal>
#include <execinfo.h>
#include <fcntl.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace lucentra {

namespace {

/// How long the main thread may be away from its event loop.
constexpr auto patience = 200ms;
/// How often it is checked.
constexpr auto interval = 20ms;
/// Resolution of the measured time.
constexpr auto resolution = 2ms;

int stackFile = -1;

/// Runs on the main thread, in whatever function that is.
void writeStack(int)
{
    std::array<void *, 64> frames;
    const int count = backtrace(frames.data(), int(frames.size()));
    backtrace_symbols_fd(frames.data(), count, stackFile);
}

int openFile()
{
    const char *path = std::getenv("LUCENTRA_HANG_FILE");
    return path ? open(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600) : -1;
}

} // namespace

HangWatch::HangWatch()
    : m_file(openFile())
    , m_mainHandle(pthread_self())
    , m_mainTask(gettid())
{
    if (m_file < 0)
        return;
    stackFile = m_file;
    std::array<void *, 1> frame;
    backtrace(frame.data(), 1); // the first call loads a library, which a signal handler must not
    std::signal(SIGUSR2, writeStack);
    m_thread = std::jthread([this](const std::stop_token &stop) { watch(stop); });
}

HangWatch::~HangWatch()
{
    if (m_file < 0)
        return;
    m_thread.request_stop();
    m_thread.join();
    close(m_file);
}

std::chrono::nanoseconds HangWatch::timeWithoutProcessor() const
{
    char path[64];
    std::snprintf(path, sizeof path, "/proc/self/task/%d/schedstat", m_mainTask);
    std::FILE *file = std::fopen(path, "r");
    if (!file)
        return {};
    unsigned long long running = 0;
    unsigned long long waiting = 0;
    const int read = std::fscanf(file, "%llu %llu", &running, &waiting);
    std::fclose(file);
    return std::chrono::nanoseconds(read == 2 ? waiting : 0);
}

bool HangWatch::waitForAnswer(const std::stop_token &stop, Clock::time_point until) const
{
    while (m_answered < m_asked && Clock::now() < until && !stop.stop_requested())
        std::this_thread::sleep_for(resolution);
    return m_answered >= m_asked || stop.stop_requested();
}

void HangWatch::watch(const std::stop_token &stop)
{
    const auto milliseconds = [](auto duration) {
        return long(std::chrono::duration_cast<std::chrono::milliseconds>(duration).count());
    };
    while (!stop.stop_requested()) {
        std::this_thread::sleep_for(interval);
        const auto asked = Clock::now();
        const auto withoutProcessor = timeWithoutProcessor();
        const quint64 number = ++m_asked;
        QMetaObject::invokeMethod(
            &m_mainThread, [this, number] { m_answered = number; }, Qt::QueuedConnection);
        if (waitForAnswer(stop, asked + patience))
            continue;
        pthread_kill(m_mainHandle, SIGUSR2);
        waitForAnswer(stop, Clock::time_point::max());
        dprintf(m_file, "hang: %ld ms, %ld ms of it without a processor\n", milliseconds(Clock::now() - asked),
                milliseconds(timeWithoutProcessor() - withoutProcessor));
    }
}

} // namespace lucentra

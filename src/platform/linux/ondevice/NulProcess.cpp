#include "NulProcess.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace lucentra {

namespace {

using Clock = std::chrono::steady_clock;

/// Longer than any answer to a line of a screen.
constexpr qsizetype longestAnswer = 1 << 20;

/// Blocks SIGPIPE, so that writing to a program that has ended fails instead of ending this one.
class SignalOfBrokenPipe
{
public:
    SignalOfBrokenPipe()
    {
        sigemptyset(&m_signal);
        sigaddset(&m_signal, SIGPIPE);
        ::pthread_sigmask(SIG_BLOCK, &m_signal, &m_before);
    }
    ~SignalOfBrokenPipe()
    {
        if (sigismember(&m_before, SIGPIPE) == 0) {
            constexpr timespec now{};
            while (::sigtimedwait(&m_signal, nullptr, &now) > 0) {
            }
        }
        ::pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
    }
    SignalOfBrokenPipe(const SignalOfBrokenPipe &) = delete;
    SignalOfBrokenPipe &operator=(const SignalOfBrokenPipe &) = delete;

private:
    sigset_t m_signal{};
    sigset_t m_before{};
};

} // namespace

/// The time limit of an answer.
struct NulProcess::Patience
{
    Clock::time_point deadline;
    const std::function<bool()> &isWanted;

    /// Waits until one of the pipes is ready; returns false if the answer is late or isn't wanted any more.
    bool waitFor(std::array<pollfd, 2> &pipes) const
    {
        constexpr std::chrono::milliseconds longest{100}; // between two checks of whether the answer is wanted
        for (;;) {
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
            if (left.count() <= 0 || (isWanted && !isWanted()))
                return false;
            const int ready = ::poll(pipes.data(), pipes.size(), int(std::min(left, longest).count()));
            if (ready > 0 || (ready < 0 && errno != EINTR))
                return ready > 0;
        }
    }
};

NulProcess::NulProcess(QStringList command)
    : m_command(std::move(command))
{
}

NulProcess::~NulProcess()
{
    stop();
}

bool NulProcess::start()
{
    std::array<int, 2> input{};
    std::array<int, 2> output{};
    if (::pipe2(input.data(), O_CLOEXEC) != 0)
        return false;
    if (::pipe2(output.data(), O_CLOEXEC) != 0) {
        ::close(input[0]);
        ::close(input[1]);
        return false;
    }
    ::fcntl(input[1], F_SETFL, O_NONBLOCK);
    std::vector<QByteArray> words;
    words.reserve(size_t(m_command.size()));
    for (const QString &word : m_command)
        words.push_back(word.toLocal8Bit());
    std::vector<char *> arguments;
    arguments.reserve(words.size() + 1);
    for (QByteArray &word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, input[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&files, output[1], STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    // A process group of its own, so that its children end with it, and without the signals that this program blocks.
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK);
    posix_spawnattr_setpgroup(&attributes, 0);
    sigset_t noSignals;
    sigemptyset(&noSignals);
    posix_spawnattr_setsigmask(&attributes, &noSignals);
    const bool isStarted =
        ::posix_spawn(&m_process, arguments.front(), &files, &attributes, arguments.data(), environ) == 0;
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    ::close(input[0]);
    ::close(output[1]);
    m_input = input[1];
    m_output = output[0];
    if (!isStarted) {
        m_process = -1;
        stop();
    }
    return isStarted;
}

void NulProcess::stop()
{
    for (int *const pipe : {&m_input, &m_output}) {
        if (*pipe >= 0)
            ::close(std::exchange(*pipe, -1));
    }
    if (m_process > 0) {
        ::kill(-m_process, SIGKILL);
        ::waitpid(std::exchange(m_process, -1), nullptr, 0);
    }
}

std::optional<QByteArray> NulProcess::exchange(QByteArrayView question, const Patience &patience) const
{
    const SignalOfBrokenPipe broken;
    QByteArray answer;
    std::array<char, 4096> piece{};
    while (answer.size() < longestAnswer) {
        // A long answer may begin before all of the question is written; reading it keeps both pipes from filling up.
        std::array<pollfd, 2> pipes{pollfd{.fd = question.isEmpty() ? -1 : m_input, .events = POLLOUT, .revents = 0},
                                    pollfd{.fd = m_output, .events = POLLIN, .revents = 0}};
        if (!patience.waitFor(pipes))
            return std::nullopt;
        if (pipes[0].revents != 0) {
            const ssize_t sent = ::write(m_input, question.data(), size_t(question.size()));
            if (sent < 0 && errno != EAGAIN && errno != EINTR)
                return std::nullopt;
            question = question.sliced(std::max<ssize_t>(sent, 0));
        }
        if (pipes[1].revents != 0) {
            const ssize_t count = ::read(m_output, piece.data(), piece.size());
            if (count <= 0)
                return std::nullopt;
            answer.append(piece.data(), count);
            if (answer.endsWith('\0'))
                return question.isEmpty() ? std::optional(answer.chopped(1)) : std::nullopt;
        }
    }
    return std::nullopt;
}

std::optional<QByteArray> NulProcess::ask(QByteArrayView question, std::chrono::milliseconds timeout,
                                          const std::function<bool()> &isWanted)
{
    if (isWanted && !isWanted())
        return std::nullopt; // before anything of it is in the stream
    const Patience patience{.deadline = Clock::now() + timeout, .isWanted = isWanted};
    if (m_process < 0 && !start())
        return std::nullopt;
    auto answer = exchange(question.toByteArray().append('\0'), patience);
    if (!answer)
        stop();
    return answer;
}

} // namespace lucentra

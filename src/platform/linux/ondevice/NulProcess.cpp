#include "NulProcess.h"

#include <QByteArrayList>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <glib.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <utility>

namespace lucentra {

namespace {

using Clock = std::chrono::steady_clock;

/// Longer than any answer to a line of a screen.
constexpr qsizetype longestAnswer = 1 << 20;

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
    // Writing to a program that has ended then fails instead of ending this one.
    static const auto ignored [[maybe_unused]] = std::signal(SIGPIPE, SIG_IGN);
    QByteArrayList words;
    for (const QString &word : m_command)
        words.append(word.toLocal8Bit());
    QList<char *> arguments;
    for (QByteArray &word : words)
        arguments.append(word.data());
    arguments.append(nullptr);
    // A process group of its own, so that its children end with it.
    const auto inChild = [](gpointer) { ::setpgid(0, 0); };
    constexpr auto flags = GSpawnFlags(G_SPAWN_DO_NOT_REAP_CHILD | G_SPAWN_STDERR_TO_DEV_NULL);
    if (!g_spawn_async_with_pipes(nullptr, arguments.data(), nullptr, flags, inChild, nullptr, &m_process, &m_input,
                                  &m_output, nullptr, nullptr))
        return false;
    ::fcntl(m_input, F_SETFL, O_NONBLOCK);
    return true;
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

#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QStringList>

#include <chrono>
#include <functional>
#include <optional>

#include <sys/types.h>

namespace lucentra {

/// A program that is kept running and answers each NUL-terminated text with another one. One thread at
/// a time.
class NulProcess
{
public:
    /// `command` is the program's path and its arguments. The program is started with the first question.
    explicit NulProcess(QStringList command);
    /// Ends the program and its children.
    ~NulProcess();
    NulProcess(const NulProcess &) = delete;
    NulProcess &operator=(const NulProcess &) = delete;

    /// The answer; nullopt if the program can't be started, ends, or doesn't answer in time, or once `isWanted`, if
    /// given, returns false. The program is then ended, and started again for the next question.
    std::optional<QByteArray> ask(QByteArrayView question, std::chrono::milliseconds timeout,
                                  const std::function<bool()> &isWanted = {});

private:
    bool start();
    void stop();
    struct Patience;
    std::optional<QByteArray> exchange(QByteArrayView question, const Patience &patience) const;

    const QStringList m_command;
    pid_t m_process = -1;
    int m_input = -1; ///< what it reads, written by us
    int m_output = -1;
};

} // namespace lucentra

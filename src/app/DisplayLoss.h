#pragma once

#include <QtGlobal>

#include <chrono>
#include <functional>

namespace lucentra {

/// What happens if the connection to the display breaks. The toolkit then reports this and ends the process from
/// within, past `main`, while other threads still run. What is to be stored is completed in between. In a Wayland
/// session, where a compositor or XWayland may crash and come back, the program starts again in place of this process.
class DisplayLoss
{
public:
    struct Program
    {
        std::function<void()> completeStoring;
        std::function<bool()> isPaneShown;
    };

    /// At most one object at a time, while there is an application object.
    explicit DisplayLoss(Program program);
    ~DisplayLoss();
    DisplayLoss(const DisplayLoss &) = delete;
    DisplayLoss &operator=(const DisplayLoss &) = delete;

private:
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &message);
    [[noreturn]] void end();

    static inline DisplayLoss *current = nullptr;
    const Program m_program;
    const std::chrono::steady_clock::time_point m_begin = std::chrono::steady_clock::now();
    const QtMessageHandler m_previous;
};

} // namespace lucentra

#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace lucentra {

/// Turns SIGTERM, SIGINT and SIGHUP into a call on the main thread, so that the program ends as by its quit command,
/// and limits the time that this takes, even if the main thread is blocked. At most one object at a time.
class ProgramEnd
{
public:
    ProgramEnd();
    ~ProgramEnd();
    ProgramEnd(const ProgramEnd &) = delete;
    ProgramEnd &operator=(const ProgramEnd &) = delete;

    /// To be called once there is an application object. Earlier signals aren't lost.
    void listen(std::function<void()> terminate);

    // The steps of the end. If one hangs, the process ends with the code. What is being stored is completed first.
    /// Begins the end, as the first signal does. Another SIGTERM or SIGINT then ends the process at once. SIGHUP
    /// doesn't: it follows SIGTERM by itself when a session ends.
    static void begin(int code);
    static void beginStoring();
    static void endStoring();

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace lucentra

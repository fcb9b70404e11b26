#pragma once

#include "CommandLine.h"
#include "Result.h"

#include <QDBusConnection>
#include <QDBusVirtualObject>

#include <functional>

namespace lucentra {

class LocalizationManager;

/// The running program's end of the session bus: makes it the only one of the user's session, and takes commands, by
/// the table of the command line.
///
/// The name is "com.tarnby.lucentra", the object "/com/tarnby/lucentra"; its interface of the same name has one method
/// without arguments a command ("Toggle", "Show" ...), and "org.freedesktop.Application" does the same by the
/// command's name ("toggle").
class RemoteControl : public QDBusVirtualObject
{
public:
    explicit RemoteControl(const QDBusConnection &bus);
    ~RemoteControl() override;

    enum class Claim {
        Ours,  ///< this is the program now
        Taken, ///< another one runs
        NoBus, ///< nobody can tell; the program can't be reached by commands
    };
    /// Asks for the name. Commands that arrive wait for the event loop.
    Claim claim();
    /// Takes commands on another bus, after the first one has ended.
    Claim moveTo(const QDBusConnection &bus);

    /// Carries out a command. Returns false if it isn't available, which is reported to the caller. Without it the
    /// program isn't there any more for its callers: it ends.
    std::function<bool(Invocation::Command)> onCommand;

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    QDBusConnection m_bus;
};

bool isProgramRunning(const QDBusConnection &bus);

/// Has the running program carry a command out, and starts it before where the command makes sense then. Blocks until
/// it is done, at most some seconds. A failure's description is in the interface language.
Result<void> sendRemoteCommand(Invocation::Command command, const QDBusConnection &bus,
                               const LocalizationManager &texts);

} // namespace lucentra

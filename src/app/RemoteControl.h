#pragma once

#include "Result.h"

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QStringView>

#include <functional>

namespace lucentra {

class LocalizationManager;

/// The running program on the session bus: makes sure that it is the only one of the session, and receives commands.
///
/// The name is "com.tarnby.lucentra", the object "/com/tarnby/lucentra". The interface "com.tarnby.lucentra" has a
/// method without arguments for each command ("Toggle", "Show" ...); the actions of "org.freedesktop.Application" have
/// the commands' names ("toggle").
class RemoteControl : public QDBusVirtualObject
{
public:
    explicit RemoteControl(const QDBusConnection &bus);
    ~RemoteControl() override;

    enum class Claim {
        Ours,  ///< this process is the program now
        Taken, ///< another one runs
        NoBus, ///< unknown; the program can't be reached by commands
    };
    /// Asks for the name. Commands that arrive wait for the event loop.
    Claim claim();
    /// Receives commands on another bus after the first one has ended.
    Claim moveTo(const QDBusConnection &bus);

    /// Carries out a command. Returns false if it isn't available, which is reported to the caller. Unset while the
    /// program ends; callers then get an error.
    std::function<bool(QStringView command)> onCommand;

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    QDBusConnection m_bus;
};

bool isProgramRunning(const QDBusConnection &bus);

/// Sends a command to the running program, which is started first if the command allows that. Blocks until the command
/// is done, a few seconds at most. A failure's description is in the interface language.
Result<void> sendRemoteCommand(QStringView command, const QDBusConnection &bus, const LocalizationManager &texts);

} // namespace lucentra

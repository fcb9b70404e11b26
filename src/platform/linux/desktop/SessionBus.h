#pragma once

#include "Scheduler.h"

#include <QDBusConnection>
#include <QObject>

#include <memory>

namespace lucentra {

/// The session bus, which may end and come back with a new connection. While there is none, tries to connect again
/// periodically.
class SessionBus : public QObject
{
    Q_OBJECT
public:
    /// Time between two attempts to connect: at first, and after a while.
    static constexpr std::chrono::milliseconds firstRetryInterval{1000};
    static constexpr std::chrono::milliseconds longestRetryInterval{10000};

    /// Connects to the bus that the environment names.
    explicit SessionBus(Scheduler &scheduler);

    /// The current connection, which may not be connected. Invalid after `returned`.
    QDBusConnection connection() const { return m_connection; }

Q_SIGNALS:
    /// There is a new connection. Names and objects must be registered again.
    void returned();

private Q_SLOTS:
    void lost();

private:
    void reconnect();

    Scheduler &m_scheduler;
    QDBusConnection m_connection;
    int m_connections = 0; ///< number of connections after the first one
    std::chrono::milliseconds m_interval = firstRetryInterval;
    std::unique_ptr<ScheduledTask> m_retry;
};

/// Names the program for the desktop's portal, which otherwise doesn't know which program a connection belongs to. Must
/// be sent before anything else is asked of a portal. Portals before version 1.20 ignore it.
void registerWithPortal(const QDBusConnection &bus);

} // namespace lucentra

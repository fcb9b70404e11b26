#pragma once

#include "Scheduler.h"

#include <QDBusConnection>
#include <QObject>

#include <memory>

namespace lucentra {

/// The session's bus, which may end and come back: a connection doesn't survive that. While there is no bus, one is
/// looked for now and then. Main thread only.
class SessionBus : public QObject
{
    Q_OBJECT
public:
    /// Between two looks for a bus: at first, and after a while.
    static constexpr std::chrono::milliseconds firstLookInterval{1000};
    static constexpr std::chrono::milliseconds longestLookInterval{10000};

    /// Connects to the bus that the environment names. The scheduler must outlive this object.
    explicit SessionBus(Scheduler &scheduler);
    ~SessionBus() override;

    /// The present connection, which may have no bus behind it. Not to be kept beyond `returned`.
    QDBusConnection connection() const { return m_connection; }

Q_SIGNALS:
    /// There is a bus again, with nothing on it that this program has put there.
    void returned();

private Q_SLOTS:
    void lost();

private:
    void look();

    Scheduler &m_scheduler;
    QDBusConnection m_connection;
    int m_connections = 0; ///< how many were made after the first one
    std::chrono::milliseconds m_interval = firstLookInterval;
    std::unique_ptr<ScheduledTask> m_look;
};

} // namespace lucentra

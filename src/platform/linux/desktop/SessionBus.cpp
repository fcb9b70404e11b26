#include "SessionBus.h"

#include <QDBusMessage>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// Follows the library's own message that a connection has ended. Returns false if it has ended already.
bool listenForEnd(QDBusConnection &connection, QObject *receiver, const char *slot)
{
    return connection.isConnected() &&
           connection.connect(QString(), u"/org/freedesktop/DBus/Local"_s, u"org.freedesktop.DBus.Local"_s,
                              u"Disconnected"_s, receiver, slot);
}

} // namespace

void registerWithPortal(const QDBusConnection &bus)
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(u"org.freedesktop.portal.Desktop"_s, u"/org/freedesktop/portal/desktop"_s,
                                       u"org.freedesktop.host.portal.Registry"_s, u"Register"_s);
    message << u"com.tarnby.lucentra"_s << QVariantMap();
    bus.send(message);
}

SessionBus::SessionBus(Scheduler &scheduler)
    : m_scheduler(scheduler)
    , m_connection(QDBusConnection::sessionBus())
{
    if (!listenForEnd(m_connection, this, SLOT(lost())))
        lost();
    else
        registerWithPortal(m_connection);
}

void SessionBus::lost()
{
    m_interval = firstRetryInterval;
    m_retry = m_scheduler.after(m_interval, [this] { reconnect(); });
}

void SessionBus::reconnect()
{
    const QString name = u"lucentra-session-%1"_s.arg(++m_connections);
    QDBusConnection connection = QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
    if (listenForEnd(connection, this, SLOT(lost()))) {
        m_connection = connection;
        registerWithPortal(m_connection);
        Q_EMIT returned();
        return;
    }
    QDBusConnection::disconnectFromBus(name);
    m_interval = std::min(2 * m_interval, longestRetryInterval);
    m_retry = m_scheduler.after(m_interval, [this] { reconnect(); });
}

} // namespace lucentra

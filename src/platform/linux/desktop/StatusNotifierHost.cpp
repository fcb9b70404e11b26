#include "StatusNotifierHost.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// Longest wait for the watcher of status items, in milliseconds.
constexpr int watcherPatience = 500;

} // namespace

bool hasStatusNotifierHost(const QDBusConnection &bus)
{
    if (!bus.isConnected() || !bus.interface()->isServiceRegistered(u"org.kde.StatusNotifierWatcher"_s))
        return false;
    auto query = QDBusMessage::createMethodCall(u"org.kde.StatusNotifierWatcher"_s, u"/StatusNotifierWatcher"_s,
                                                u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    query.setArguments({u"org.kde.StatusNotifierWatcher"_s, u"IsStatusNotifierHostRegistered"_s});
    const QDBusReply<QDBusVariant> reply = bus.call(query, QDBus::Block, watcherPatience);
    return reply.isValid() && reply.value().variant().toBool();
}

} // namespace lucentra

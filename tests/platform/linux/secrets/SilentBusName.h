#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>

namespace lucentra {

/// Owns a name on a bus, takes every call to it and never answers one. Calls are counted by the event loop.
class SilentBusName : public QDBusVirtualObject
{
public:
    SilentBusName(const QString &busAddress, const QString &name)
        : m_bus(QDBusConnection::connectToBus(busAddress, name))
        , m_isOwner(m_bus.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath) &&
                    m_bus.registerService(name))
    {
    }
    ~SilentBusName() override { QDBusConnection::disconnectFromBus(m_bus.name()); }

    bool isOwner() const { return m_isOwner; }
    int callCount() const { return m_callCount; }
    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &, const QDBusConnection &) override { return ++m_callCount > 0; }

private:
    QDBusConnection m_bus;
    const bool m_isOwner;
    int m_callCount = 0;
};

} // namespace lucentra

#pragma once

#include <gio/gio.h>

#include <QByteArray>

#include <atomic>

namespace lucentra {

/// Owns a name on a bus, takes every call to it and never answers one.
class SilentBusName
{
public:
    SilentBusName(const QByteArray &busAddress, const char *name)
        : m_connection(g_dbus_connection_new_for_address_sync(
              busAddress.constData(),
              static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
              nullptr, nullptr, nullptr))
    {
        if (!m_connection)
            return;
        GVariant *answer = g_dbus_connection_call_sync(
            m_connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
            g_variant_new("(su)", name, 0U), nullptr, G_DBUS_CALL_FLAGS_NONE, 5000, nullptr, nullptr);
        m_isOwner = answer != nullptr;
        if (answer)
            g_variant_unref(answer);
        m_filter = g_dbus_connection_add_filter(m_connection, &SilentBusName::swallow, this, nullptr);
    }
    ~SilentBusName()
    {
        if (!m_connection)
            return;
        g_dbus_connection_remove_filter(m_connection, m_filter);
        g_dbus_connection_close_sync(m_connection, nullptr, nullptr);
        g_object_unref(m_connection);
    }
    SilentBusName(const SilentBusName &) = delete;
    SilentBusName &operator=(const SilentBusName &) = delete;

    bool isOwner() const { return m_isOwner; }
    int callCount() const { return m_callCount; }

private:
    static GDBusMessage *swallow(GDBusConnection *, GDBusMessage *message, gboolean isIncoming, gpointer self)
    {
        if (!isIncoming || g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL)
            return message;
        ++static_cast<SilentBusName *>(self)->m_callCount;
        g_object_unref(message);
        return nullptr;
    }

    GDBusConnection *m_connection;
    guint m_filter = 0;
    bool m_isOwner = false;
    std::atomic<int> m_callCount = 0;
};

} // namespace lucentra

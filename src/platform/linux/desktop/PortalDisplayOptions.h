#pragma once

#include "AccessibilityDisplayOptions.h"
#include "Callback.h"

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <QVariantMap>

#include <memory>

class QDBusServiceWatcher;

namespace lucentra {

/// The display options from the desktop portal's settings, read asynchronously and followed. Disabled animations
/// (GNOME's and KDE's setting) mean reduced motion; higher contrast means reduced transparency, since desktops have no
/// setting for that. Without a portal the defaults stay.
class PortalDisplayOptions : public QObject
{
    Q_OBJECT
public:
    /// Uses the given bus, normally the session bus.
    explicit PortalDisplayOptions(const QDBusConnection &bus);
    ~PortalDisplayOptions() override;

    /// Uses another bus from now on, after the previous one has ended.
    void setBus(const QDBusConnection &bus);

    /// The current options. The defaults until the desktop has answered, or if it has no such options.
    AccessibilityDisplayOptions options() const { return m_options; }
    /// Called with the new options whenever they change.
    Callback<const AccessibilityDisplayOptions &> onChanged;

private Q_SLOTS:
    void settingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    void readAll();
    void take(const QString &group, const QString &key, const QVariant &value);
    void update();

    QDBusConnection m_bus;
    std::unique_ptr<QDBusServiceWatcher> m_watcher;
    QVariantMap m_values; ///< by group and key
    AccessibilityDisplayOptions m_options;
};

} // namespace lucentra

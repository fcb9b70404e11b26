#pragma once

#include "AccessibilityDisplayOptions.h"

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
class PortalDisplayOptions : public QObject, public AccessibilityDisplaySource
{
    Q_OBJECT
public:
    /// Uses the given bus, normally the session bus.
    explicit PortalDisplayOptions(const QDBusConnection &bus);
    ~PortalDisplayOptions() override;

    /// Uses another bus from now on, after the previous one has ended.
    void setBus(const QDBusConnection &bus);

    AccessibilityDisplayOptions options() const override { return m_options; }
    void setChangeHandler(std::function<void(const AccessibilityDisplayOptions &)> changed) override
    {
        m_changed = std::move(changed);
    }

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
    std::function<void(const AccessibilityDisplayOptions &)> m_changed;
};

} // namespace lucentra

#pragma once

#include "AccessibilityDisplayOptions.h"

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <QVariantMap>

#include <memory>

class QDBusServiceWatcher;

namespace lucentra {

/// The display options from the desktop portal's settings, asked for without waiting and followed live. Animations
/// that are switched off (GNOME's and KDE's setting) are reduced motion; the wish for a higher contrast stands for
/// reduced transparency, for which desktops have no setting of its own. Without a portal the defaults stay.
class PortalDisplayOptions : public QObject, public AccessibilityDisplaySource
{
    Q_OBJECT
public:
    /// Asks on a bus, in general the session's; it must outlive this object.
    explicit PortalDisplayOptions(const QDBusConnection &bus, QObject *parent = nullptr);
    ~PortalDisplayOptions() override;

    /// Asks on another bus from then on: the former has ended.
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

#pragma once

#include "PowerState.h"

#include <QObject>
#include <QVariantMap>

#include <utility>

namespace lucentra {

/// The state that UPower and the power profiles' service report on the system bus, to which the first
/// call connects. False without these services.
class UPowerState : public QObject, public PowerState
{
    Q_OBJECT
public:
    bool isSaving() override;
    void setChangeHandler(std::function<void()> changed) override { m_changed = std::move(changed); }

private Q_SLOTS:
    void propertiesChanged(const QString &interface, const QVariantMap &changed, const QStringList &invalidated);

private:
    void follow(const QString &service, const QString &path);
    void take(const QVariantMap &properties);

    bool m_isFollowing = false;
    bool m_isOnBattery = false;
    bool m_isSaverChosen = false;
    std::function<void()> m_changed;
};

} // namespace lucentra

#include "UPowerState.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

constexpr auto objectProperties = "org.freedesktop.DBus.Properties"_L1;

} // namespace

bool UPowerState::isSaving()
{
    if (!std::exchange(m_isFollowing, true)) {
        follow(u"org.freedesktop.UPower"_s, u"/org/freedesktop/UPower"_s);
        follow(u"net.hadess.PowerProfiles"_s, u"/net/hadess/PowerProfiles"_s);
    }
    return m_isOnBattery || m_isSaverChosen;
}

void UPowerState::follow(const QString &service, const QString &path)
{
    QDBusConnection bus = QDBusConnection::systemBus();
    bus.connect(service, path, objectProperties, u"PropertiesChanged"_s, this,
                SLOT(propertiesChanged(QString,QVariantMap,QStringList)));
    auto question = QDBusMessage::createMethodCall(service, path, objectProperties, u"GetAll"_s);
    question.setArguments({service}); // each interface has its service's name
    const auto *answer = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *finished) {
        const QDBusPendingReply<QVariantMap> reply = *finished;
        finished->deleteLater();
        if (reply.isValid())
            take(reply.value());
    });
}

void UPowerState::propertiesChanged(const QString &, const QVariantMap &changed, const QStringList &)
{
    take(changed);
}

void UPowerState::take(const QVariantMap &properties)
{
    const bool before = isSaving();
    m_isOnBattery = properties.value(u"OnBattery"_s, m_isOnBattery).toBool();
    if (const auto profile = properties.constFind(u"ActiveProfile"_s); profile != properties.constEnd())
        m_isSaverChosen = profile->toString() == "power-saver"_L1;
    if (isSaving() != before && m_changed)
        m_changed();
}

} // namespace lucentra

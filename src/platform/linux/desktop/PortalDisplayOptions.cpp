#include "PortalDisplayOptions.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QMap>
#include <QStringList>

#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

const auto portalService = u"org.freedesktop.portal.Desktop"_s;
const auto portalPath = u"/org/freedesktop/portal/desktop"_s;
const auto settingsInterface = u"org.freedesktop.portal.Settings"_s;

const auto appearance = u"org.freedesktop.appearance"_s;
const auto gnomeInterface = u"org.gnome.desktop.interface"_s;
const auto gnomeAccessibility = u"org.gnome.desktop.a11y.interface"_s;
const auto kdeGlobals = u"org.kde.kdeglobals.KDE"_s;

QString path(const QString &group, const QString &key)
{
    return group + u'/' + key;
}

} // namespace

PortalDisplayOptions::PortalDisplayOptions(const QDBusConnection &bus)
    : m_bus(bus)
{
    qRegisterMetaType<QDBusVariant>(); // or else the slot's type has no name yet, and isn't found
    setBus(bus);
}

PortalDisplayOptions::~PortalDisplayOptions() = default;

void PortalDisplayOptions::setBus(const QDBusConnection &bus)
{
    m_bus = bus;
    m_bus.connect(portalService, portalPath, settingsInterface, u"SettingChanged"_s, this,
                  SLOT(settingChanged(QString, QString, QDBusVariant)));
    m_watcher = std::make_unique<QDBusServiceWatcher>(portalService, m_bus, QDBusServiceWatcher::WatchForRegistration);
    connect(m_watcher.get(), &QDBusServiceWatcher::serviceRegistered, this, &PortalDisplayOptions::readAll);
    readAll();
}

void PortalDisplayOptions::readAll()
{
    QDBusMessage call = QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface, u"ReadAll"_s);
    call << QStringList{appearance, gnomeInterface, gnomeAccessibility, kdeGlobals};
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusMessage reply = watcher->reply();
        if (watcher->isError() || reply.signature() != u"a{sa{sv}}"_s)
            return; // no portal, or one without settings: the defaults stay
        QMap<QString, QVariantMap> groups;
        reply.arguments().constFirst().value<QDBusArgument>() >> groups;
        for (auto group = groups.cbegin(); group != groups.cend(); ++group) {
            for (auto entry = group->cbegin(); entry != group->cend(); ++entry)
                take(group.key(), entry.key(), entry.value());
        }
        update();
    });
}

void PortalDisplayOptions::settingChanged(const QString &group, const QString &key, const QDBusVariant &value)
{
    take(group, key, value.variant());
    update();
}

void PortalDisplayOptions::take(const QString &group, const QString &key, const QVariant &value)
{
    m_values.insert(path(group, key), value);
}

void PortalDisplayOptions::update()
{
    const auto number = [this](const QString &group, const QString &key, double absent) {
        bool isNumber = false;
        const double value = m_values.value(path(group, key)).toDouble(&isNumber);
        return isNumber ? value : absent;
    };
    const AccessibilityDisplayOptions options{
        .reduceMotion = !m_values.value(path(gnomeInterface, u"enable-animations"_s), true).toBool() ||
                        number(kdeGlobals, u"AnimationDurationFactor"_s, 1) == 0 ||
                        number(appearance, u"reduced-motion"_s, 0) == 1,
        .reduceTransparency = number(appearance, u"contrast"_s, 0) == 1 ||
                              m_values.value(path(gnomeAccessibility, u"high-contrast"_s)).toBool(),
    };
    if (std::exchange(m_options, options) != options)
        onChanged(options);
}

} // namespace lucentra

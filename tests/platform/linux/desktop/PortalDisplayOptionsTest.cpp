#include "PortalDisplayOptions.h"
#include "Columns.h"
#include "PrivateBus.h"
#include "TestProgram.h"
#include "UPowerState.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QMap>
#include <QTest>

using namespace lucentra;
using namespace Qt::StringLiterals;

using Groups = QMap<QString, QVariantMap>;
Q_DECLARE_METATYPE(Groups)

const auto portalService = u"org.freedesktop.portal.Desktop"_s;
const auto portalPath = u"/org/freedesktop/portal/desktop"_s;

/// A portal that knows some settings.
class FakePortal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    explicit FakePortal(const QDBusConnection &bus, Groups groups)
        : m_bus(bus)
        , m_groups(std::move(groups))
    {
        m_bus.registerObject(portalPath, this, QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        m_bus.registerService(portalService);
    }
    ~FakePortal() override
    {
        m_bus.unregisterService(portalService);
        m_bus.unregisterObject(portalPath);
    }

public Q_SLOTS:
    Groups ReadAll(const QStringList &) { return m_groups; }

Q_SIGNALS:
    void SettingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    QDBusConnection m_bus;
    const Groups m_groups;
};

/// A service that knows whether the computer runs on battery.
class FakePower : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.UPower")
    Q_PROPERTY(bool OnBattery MEMBER isOnBattery)

public:
    bool isOnBattery = true;
};

namespace {

/// Returns once everything that a bus's client has asked the portal for, and all that the portal has sent, has arrived.
void settle(const QDBusConnection &client)
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(portalService, portalPath, u"org.freedesktop.portal.Settings"_s, u"ReadAll"_s);
    call << QStringList();
    QCOMPARE(client.call(call, QDBus::BlockWithGui).type(), QDBusMessage::ReplyMessage);
}

} // namespace

class PortalDisplayOptionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qDBusRegisterMetaType<Groups>();
        QVERIFY(m_bus.start());
    }

    void settings_data()
    {
        const auto row = columns<QString, QString, QVariant, bool, bool>("group", "key", "value", "reduceMotion",
                                                                         "reduceTransparency");
        const QString gnome = u"org.gnome.desktop.interface"_s;
        const QString appearance = u"org.freedesktop.appearance"_s;
        const QString kde = u"org.kde.kdeglobals.KDE"_s;
        row("GNOME without animations", gnome, u"enable-animations"_s, false, true, false);
        row("KDE without animations", kde, u"AnimationDurationFactor"_s, u"0"_s, true, false);
        row("KDE with an unreadable value", kde, u"AnimationDurationFactor"_s, u"fast"_s, false, false);
        row("reduced motion", appearance, u"reduced-motion"_s, 1U, true, false);
        row("higher contrast", appearance, u"contrast"_s, 1U, false, true);
    }
    void settings()
    {
        const auto [group, key, value, reduceMotion, reduceTransparency] =
            fetched<QString, QString, QVariant, bool, bool>();
        const AccessibilityDisplayOptions expected{reduceMotion, reduceTransparency};
        QDBusConnection portalBus = QDBusConnection::connectToBus(m_bus.address(), u"portal"_s);
        QDBusConnection ourBus = QDBusConnection::connectToBus(m_bus.address(), u"ours"_s);

        { // stored before the program starts
            FakePortal portal(portalBus, {{group, {{key, value}}}});
            PortalDisplayOptions options(ourBus);
            bool changed = false;
            options.onChanged = [&](const AccessibilityDisplayOptions &) { changed = true; };
            settle(ourBus);
            QCOMPARE(options.options(), expected);
            QCOMPARE(changed, expected != AccessibilityDisplayOptions());
        }
        // changed while it runs
        FakePortal portal(portalBus, {});
        PortalDisplayOptions options(ourBus);
        settle(ourBus);
        QCOMPARE(options.options(), AccessibilityDisplayOptions());
        Q_EMIT portal.SettingChanged(group, key, QDBusVariant(value));
        settle(ourBus);
        QCOMPARE(options.options(), expected);
    }

    void portalThatStartsLater()
    {
        QDBusConnection portalBus = QDBusConnection::connectToBus(m_bus.address(), u"portal"_s);
        PortalDisplayOptions options(QDBusConnection::connectToBus(m_bus.address(), u"ours"_s));
        FakePortal portal(portalBus, {{u"org.gnome.desktop.interface"_s, {{u"enable-animations"_s, false}}}});
        QTRY_VERIFY(options.options().reduceMotion);
    }

    void powerIsSavedOnBatteryAndIfTheUserSaysSo()
    {
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", m_bus.address().toLocal8Bit());
        QDBusConnection bus = QDBusConnection::connectToBus(m_bus.address(), u"power"_s);
        FakePower power;
        bus.registerObject(u"/org/freedesktop/UPower"_s, &power, QDBusConnection::ExportAllProperties);
        UPowerState state;
        int changes = 0;
        state.setChangeHandler([&] { ++changes; });
        QVERIFY(bus.registerService(u"org.freedesktop.UPower"_s));
        QVERIFY(!state.isSaving());
        QTRY_VERIFY(state.isSaving());
        const auto change = [&](const QString &path, const QString &name, const QVariant &value) {
            auto signal = QDBusMessage::createSignal(path, u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s);
            signal.setArguments({u"any"_s, QVariantMap{{name, value}}, QStringList()});
            bus.send(signal);
        };
        change(u"/org/freedesktop/UPower"_s, u"OnBattery"_s, false);
        QTRY_VERIFY(!state.isSaving());
        QVERIFY(bus.registerService(u"net.hadess.PowerProfiles"_s));
        change(u"/net/hadess/PowerProfiles"_s, u"ActiveProfile"_s, u"power-saver"_s);
        QTRY_VERIFY(state.isSaving());
        change(u"/net/hadess/PowerProfiles"_s, u"ActiveProfile"_s, u"balanced"_s);
        QTRY_COMPARE(changes, 4);
    }

private:
    PrivateBus m_bus;
};

static const TestClass<PortalDisplayOptionsTest> portalDisplayOptionsTest;
#include "PortalDisplayOptionsTest.moc"

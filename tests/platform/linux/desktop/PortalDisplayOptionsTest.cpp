#include "PortalDisplayOptions.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QMap>
#include <QProcess>
#include <QTest>

#include <memory>

using namespace lucentra;
using namespace Qt::StringLiterals;

using Groups = QMap<QString, QVariantMap>;
Q_DECLARE_METATYPE(Groups)

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
        m_bus.registerObject(u"/org/freedesktop/portal/desktop"_s, this,
                             QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        m_bus.registerService(u"org.freedesktop.portal.Desktop"_s);
    }
    ~FakePortal() override
    {
        m_bus.unregisterService(u"org.freedesktop.portal.Desktop"_s);
        m_bus.unregisterObject(u"/org/freedesktop/portal/desktop"_s);
    }

public Q_SLOTS:
    Groups ReadAll(const QStringList &) { return m_groups; }

Q_SIGNALS:
    void SettingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    QDBusConnection m_bus;
    const Groups m_groups;
};

class PortalDisplayOptionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qDBusRegisterMetaType<Groups>();
        m_daemon.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--print-address=1"_s});
        QVERIFY(m_daemon.waitForReadyRead());
        m_address = QString::fromUtf8(m_daemon.readLine().trimmed());
    }
    void cleanupTestCase()
    {
        m_daemon.terminate();
        m_daemon.waitForFinished();
    }

    void settings_data()
    {
        QTest::addColumn<QString>("group");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<bool>("reduceMotion");
        QTest::addColumn<bool>("reduceTransparency");
        const QString gnome = u"org.gnome.desktop.interface"_s;
        const QString appearance = u"org.freedesktop.appearance"_s;
        const QString kde = u"org.kde.kdeglobals.KDE"_s;
        QTest::newRow("GNOME without animations")
            << gnome << u"enable-animations"_s << QVariant(false) << true << false;
        QTest::newRow("GNOME with animations") << gnome << u"enable-animations"_s << QVariant(true) << false << false;
        QTest::newRow("KDE without animations")
            << kde << u"AnimationDurationFactor"_s << QVariant(u"0"_s) << true << false;
        QTest::newRow("KDE with slow animations")
            << kde << u"AnimationDurationFactor"_s << QVariant(u"2.5"_s) << false << false;
        QTest::newRow("KDE with an unreadable value")
            << kde << u"AnimationDurationFactor"_s << QVariant(u"fast"_s) << false << false;
        QTest::newRow("reduced motion") << appearance << u"reduced-motion"_s << QVariant(1U) << true << false;
        QTest::newRow("higher contrast") << appearance << u"contrast"_s << QVariant(1U) << false << true;
        QTest::newRow("a dark colour scheme is neither")
            << appearance << u"color-scheme"_s << QVariant(1U) << false << false;
    }
    void settings()
    {
        QFETCH(QString, group);
        QFETCH(QString, key);
        QFETCH(QVariant, value);
        QFETCH(bool, reduceMotion);
        QFETCH(bool, reduceTransparency);
        const AccessibilityDisplayOptions expected{reduceMotion, reduceTransparency};
        QDBusConnection portalBus = QDBusConnection::connectToBus(m_address, u"portal"_s);
        QDBusConnection ourBus = QDBusConnection::connectToBus(m_address, u"ours"_s);

        { // stored before the program starts
            FakePortal portal(portalBus, {{group, {{key, value}}}});
            PortalDisplayOptions options(ourBus);
            bool changed = false;
            options.setChangeHandler([&](const AccessibilityDisplayOptions &) { changed = true; });
            QTest::qWait(60);
            QCOMPARE(options.options(), expected);
            QCOMPARE(changed, expected != AccessibilityDisplayOptions());
        }
        // changed while it runs
        PortalDisplayOptions options(ourBus);
        QTest::qWait(30);
        QCOMPARE(options.options(), AccessibilityDisplayOptions());
        FakePortal portal(portalBus, {});
        QTest::qWait(30);
        Q_EMIT portal.SettingChanged(group, key, QDBusVariant(value));
        QTest::qWait(60);
        QCOMPARE(options.options(), expected);
    }

    void changedOnAPortalThatWasThereBefore()
    {
        QDBusConnection portalBus = QDBusConnection::connectToBus(m_address, u"portal"_s);
        FakePortal portal(portalBus, {});
        PortalDisplayOptions options(QDBusConnection::connectToBus(m_address, u"ours"_s));
        QTest::qWait(60);
        for (const bool reduced : {true, false}) {
            Q_EMIT portal.SettingChanged(u"org.freedesktop.appearance"_s, u"reduced-motion"_s,
                                         QDBusVariant(reduced ? 1U : 0U));
            QTRY_COMPARE(options.options().reduceMotion, reduced);
        }
    }

    void portalThatStartsLater()
    {
        QDBusConnection portalBus = QDBusConnection::connectToBus(m_address, u"portal"_s);
        PortalDisplayOptions options(QDBusConnection::connectToBus(m_address, u"ours"_s));
        QTest::qWait(30);
        FakePortal portal(portalBus, {{u"org.gnome.desktop.interface"_s, {{u"enable-animations"_s, false}}}});
        QTRY_VERIFY(options.options().reduceMotion);
    }

private:
    QProcess m_daemon;
    QString m_address;
};

QTEST_GUILESS_MAIN(PortalDisplayOptionsTest)
#include "PortalDisplayOptionsTest.moc"

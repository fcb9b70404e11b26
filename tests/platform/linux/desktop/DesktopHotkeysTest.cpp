#include "DesktopHotkeys.h"
#include "Columns.h"
#include "ManualScheduler.h"
#include "PrivateBus.h"
#include "SessionBus.h"
#include "TestProgram.h"
#include "VirtualKeys.h"

#include <QDBusConnection>
#include <QDBusMetaType>
#include <QDBusVirtualObject>
#include <QKeySequence>
#include <QTest>

using namespace lucentra;
using namespace Qt::StringLiterals;

struct Shortcut
{
    QString id;
    QVariantMap properties;
};

QDBusArgument &operator<<(QDBusArgument &argument, const Shortcut &shortcut)
{
    argument.beginStructure();
    argument << shortcut.id << shortcut.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, Shortcut &shortcut)
{
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.properties;
    argument.endStructure();
    return argument;
}

/// A service with the methods of both kinds of desktops. Remembers what it has been given.
class FakeDesktop : public QDBusVirtualObject
{
public:
    FakeDesktop(const QString &address, const QString &service)
        : m_bus(QDBusConnection::connectToBus(address, service))
        , m_service(service)
    {
        m_bus.registerVirtualObject(u"/"_s, this, QDBusConnection::SubPath);
        m_bus.registerService(service);
    }
    ~FakeDesktop() override { QDBusConnection::disconnectFromBus(m_service); }

    void send(const QString &path, const QString &interface, const QString &signal, const QVariantList &arguments)
    {
        QDBusMessage message = QDBusMessage::createSignal(path, interface, signal);
        message.setArguments(arguments);
        m_bus.send(message);
    }

    QString toggleKeys; ///< as the program has given them
    int count = 0;      ///< of times

    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &bus) override
    {
        const QString &method = message.member();
        const QVariantList arguments = message.arguments();
        if (method == u"Get") {
            bus.send(message.createReply(QVariant::fromValue(QDBusVariant(1U))));
        } else if (method == u"CreateSession" || method == u"BindShortcuts") {
            const auto options = qdbus_cast<QVariantMap>(arguments.constLast());
            const QString path = u"/request/"_s + options[u"handle_token"_s].toString();
            bus.send(message.createReply(QVariant::fromValue(QDBusObjectPath(path))));
            QVariantMap results{{u"session_handle"_s, u"/session"_s}};
            if (method == u"BindShortcuts") {
                auto shortcuts = qdbus_cast<QList<Shortcut>>(arguments[1]);
                toggleKeys = shortcuts[0].properties[u"preferred_trigger"_s].toString();
                ++count;
                shortcuts[0].properties = {{u"trigger_description"_s, u"Press <b>T</b>"_s}};
                results = {{u"shortcuts"_s, QVariant::fromValue(shortcuts)}};
            }
            send(path, u"org.freedesktop.portal.Request"_s, u"Response"_s, {0U, results});
        } else if (method == u"setShortcut") {
            const bool isDefault = arguments[2].toUInt() == 8;
            const auto keys = qdbus_cast<QList<int>>(arguments[1]);
            if (!isDefault && qdbus_cast<QStringList>(arguments[0])[1] == u"toggle") {
                toggleKeys = keys.isEmpty() ? QString() : QKeySequence(keys[0]).toString();
                ++count;
            }
            bus.send(message.createReply(QVariant::fromValue(QList<int>{int(Qt::META) | Qt::Key_F7})));
        }
        return true;
    }

private:
    QDBusConnection m_bus;
    const QString m_service;
};

constexpr auto toggle = HotkeyAction::TogglePane;
constexpr auto translate = HotkeyAction::TranslateArea;
const auto portalName = u"org.freedesktop.portal.Desktop"_s;
const auto plasmaName = u"org.kde.kglobalaccel"_s;

class DesktopHotkeysTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qDBusRegisterMetaType<Shortcut>();
        qDBusRegisterMetaType<QList<Shortcut>>();
        qDBusRegisterMetaType<QList<int>>();
        QVERIFY(m_private.start());
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_private.address().toUtf8());
    }

    void desktopsKeys_data()
    {
        const auto row =
            columns<QString, quint32, quint32, QString, QString>("service", "key", "modifiers", "given", "description");
        using namespace hotkeyModifier;
        const QString shown = u"Press <b>T</b>"_s;
        row("portal, letter", portalName, virtualKey::t, option, u"ALT+t"_s, shown);
        row("portal, named", portalName, quint32(0x74), (command | control), u"CTRL+LOGO+Page_Up"_s, shown);
        row("portal, sign", portalName, quint32(43), option, QString(), shown);
        row("portal, function key", portalName, quint32(0x7A), quint32(0), u"F1"_s, shown);
        row("Plasma, letter", plasmaName, virtualKey::t, (option | shift), u"Alt+Shift+T"_s, u"Meta+F7"_s);
        row("Plasma, named", plasmaName, virtualKey::returnKey, option, u"Alt+Return"_s, u"Meta+F7"_s);
        row("Plasma, sign", plasmaName, quint32(43), control, u"Ctrl+,"_s, u"Meta+F7"_s);
    }
    void desktopsKeys()
    {
        QFETCH(QString, service);
        QFETCH(quint32, key);
        QFETCH(quint32, modifiers);
        QFETCH(QString, given);
        QFETCH(QString, description);
        SessionBus bus(m_scheduler);
        DesktopHotkeys hotkeys(bus, nullptr, [](const QString &text) { return text; });
        QCOMPARE(hotkeys.registerHotkey(toggle, key, modifiers), hotkeyStatus::invalid);
        int status = 0;
        int changes = 0;
        hotkeys.setChangeHandler([&] {
            ++changes;
            hotkeys.unregisterHotkeys();
            status = hotkeys.registerHotkey(toggle, key, modifiers);
            hotkeys.registerHotkey(translate, virtualKey::returnKey, modifiers);
        });
        QList<HotkeyAction> pressed;
        hotkeys.setPressedHandler([&](HotkeyAction action) { pressed.append(action); });
        auto desktop = std::make_unique<FakeDesktop>(m_private.address(), service);
        QTRY_COMPARE(hotkeys.keysOfDesktop(toggle), description);
        QCOMPARE(desktop->toggleKeys, given);
        QVERIFY(!hotkeys.areKeysChosenHere());

        const auto press = [&](const QString &owner, const QString &action) {
            if (service == portalName)
                desktop->send(
                    u"/org/freedesktop/portal/desktop"_s, u"org.freedesktop.portal.GlobalShortcuts"_s, u"Activated"_s,
                    {QVariant::fromValue(QDBusObjectPath(u'/' + owner)), action, qulonglong(1), QVariantMap()});
            else
                desktop->send(u"/component/x"_s, u"org.kde.kglobalaccel.Component"_s, u"globalShortcutPressed"_s,
                              {owner, action, qlonglong(1)});
        };
        const QString own = service == portalName ? u"session"_s : u"lucentra"_s;
        press(u"other"_s, u"toggle"_s);
        press(own, u"unknown"_s);
        press(own, u"translate"_s);
        press(own, u"toggle"_s);
        QTRY_COMPARE(pressed, QList({translate, toggle}));

        // During a recording, and after it.
        hotkeys.unregisterHotkeys();
        press(own, u"toggle"_s);
        hotkeys.registerHotkey(translate, virtualKey::returnKey, modifiers);
        press(own, u"translate"_s);
        QTRY_COMPARE(pressed, QList({translate, toggle, translate}));
        hotkeys.registerHotkey(toggle, key, modifiers);
        QCOMPARE(desktop->count, 1);

        // The desktop starts its service again.
        desktop.reset();
        QTRY_COMPARE(changes, 2);
        QCOMPARE(status, hotkeyStatus::invalid);
        desktop = std::make_unique<FakeDesktop>(m_private.address(), service);
        QTRY_COMPARE(desktop->count, 1);
        QTRY_COMPARE(hotkeys.keysOfDesktop(toggle), description);
    }

private:
    PrivateBus m_private;
    ManualScheduler m_scheduler;
};

static const TestClass<DesktopHotkeysTest> desktopHotkeysTest;
#include "DesktopHotkeysTest.moc"
